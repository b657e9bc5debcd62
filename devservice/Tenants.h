#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "Response.h"

namespace merovanta::devservice {

/// The tenants whose apps may come, with the tokens that the apps are initialised with; without a list all of
/// them may. Only a WebSocket's handshake carries the token: of everything else the tenant is known by its
/// name alone.
class Tenants {
 public:
    /// Reads a list with a tenant's id and its token, separated by blanks, on each line; "#" begins a
    /// comment. Returns what went wrong, if anything.
    std::optional<std::string> load(const std::filesystem::path& file);

    /// What an app of another tenant is answered.
    static Response refusal() { return Response::error(403, "the tenant or its token is not known here"); }

    bool allows(const std::string& tenantId) const;
    bool allows(const std::string& tenantId, const std::string& token) const;

 private:
    std::optional<std::map<std::string, std::string>> tokens_;
};

}  // namespace merovanta::devservice
