#include "PageAssets.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <span>

#include "EmbeddedFile.h"

namespace merovanta::devservice {
namespace {

std::span<const EmbeddedFile> embeddedFiles() {
    return {kEmbeddedFiles, kEmbeddedFileCount};
}

std::string_view contentType(std::string_view name) {
    if (name.ends_with(".html")) return "text/html; charset=utf-8";
    if (name.ends_with(".css")) return "text/css; charset=utf-8";
    if (name.ends_with(".js")) return "text/javascript; charset=utf-8";
    if (name.ends_with(".svg")) return "image/svg+xml";
    return "application/octet-stream";
}

constexpr std::string_view kContentSecurityPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; connect-src 'self'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

}  // namespace

std::vector<std::string_view> PageAssets::names(std::string_view folder) {
    std::vector<std::string_view> result;
    for (const EmbeddedFile& file : embeddedFiles()) {
        if (file.name.starts_with(folder)) result.push_back(file.name);
    }
    return result;
}

Response PageAssets::serve(std::string_view name) const {
    const auto files = embeddedFiles();
    const auto found =
        std::find_if(files.begin(), files.end(), [&](const EmbeddedFile& file) { return file.name == name; });
    if (found == files.end()) return Response::error(404, "no such file");
    Response response{200,
                      std::string(contentType(name)),
                      std::string(found->content),
                      {{"Content-Security-Policy", std::string(kContentSecurityPolicy)},
                       {"Referrer-Policy", "no-referrer"},
                       {"Cross-Origin-Resource-Policy", "same-origin"}}};
    if (!directory_.empty()) {
        std::ifstream file(directory_ / name, std::ios::binary);
        if (!file) return Response::error(404, "the directory of the pages lacks this file");
        response.body.assign(std::istreambuf_iterator<char>(file), {});
    }
    return response;
}

}  // namespace merovanta::devservice
