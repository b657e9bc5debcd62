#include "Tenants.h"

#include <fstream>
#include <sstream>

#include "Secret.h"

namespace merovanta::devservice {

std::optional<std::string> Tenants::load(const std::filesystem::path& file) {
    std::ifstream lines(file);
    if (!lines) return "cannot read " + file.string();
    std::map<std::string, std::string> tokens;
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::istringstream words(line.substr(0, line.find('#')));
        std::string tenant, token, more;
        if (!(words >> tenant)) continue;
        if (!(words >> token) || words >> more)
            return file.string() + ", line " + std::to_string(number) + ": not a tenant and its token";
        tokens[tenant] = token;
    }
    tokens_ = std::move(tokens);
    return std::nullopt;
}

bool Tenants::allows(const std::string& tenantId) const {
    return !tokens_ || tokens_->contains(tenantId);
}

bool Tenants::allows(const std::string& tenantId, const std::string& token) const {
    if (!tokens_) return true;
    const auto known = tokens_->find(tenantId);
    return known != tokens_->end() && isSameSecret(known->second, token);
}

}  // namespace merovanta::devservice
