#include "PageAssets.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <span>
#include <utility>

#include "Compression.h"
#include "EmbeddedFile.h"
#include "Secret.h"

namespace merovanta::devservice {
namespace {

std::string_view contentType(std::string_view name) {
    if (name.ends_with(".html")) return "text/html; charset=utf-8";
    if (name.ends_with(".css")) return "text/css; charset=utf-8";
    if (name.ends_with(".js")) return "text/javascript; charset=utf-8";
    if (name.ends_with(".svg")) return "image/svg+xml";
    return "application/octet-stream";
}

constexpr std::size_t kVersionDigits = 16;
constexpr const char* kEarly = "console/early.js";

constexpr std::string_view kScriptBegin = "<script>", kScriptEnd = "</script>";

// The page's one script within itself, if it has one.
std::string_view ownScript(std::string_view content) {
    const std::size_t begin = content.find(kScriptBegin);
    if (begin == std::string_view::npos) return {};
    const std::string_view rest = content.substr(begin + kScriptBegin.size());
    return rest.substr(0, rest.find(kScriptEnd));
}

std::string contentSecurityPolicy(std::string_view content) {
    const std::string_view script = ownScript(content);
    return "default-src 'none'; script-src 'self'" +
           (script.empty() ? "" : " 'sha256-" + digestBase64(script) + "'") +
           "; style-src 'self'; img-src 'self' blob:; connect-src 'self'; base-uri 'none'; form-action "
           "'none'; "
           "frame-ancestors 'none'";
}

Response page(std::string_view name, std::string content) {
    std::string policy = contentSecurityPolicy(name.ends_with(".html") ? content : "");
    return {200,
            std::string(contentType(name)),
            std::move(content),
            {{"Content-Security-Policy", std::move(policy)},
             {"Referrer-Policy", "same-origin"},
             {"Cross-Origin-Resource-Policy", "same-origin"}}};
}

// One that cannot lead out of its folder.
bool isFileName(std::string_view name) {
    return !name.empty() && name.front() != '.' && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
               c == '-' || c == '_';
    });
}

void replaceAll(std::string& text, std::string_view from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// Puts a script into a page, in place of its being named there.
void takeIn(const std::string& name, std::string_view script, std::string& page) {
    while (script.ends_with('\n'))
        script.remove_suffix(1);
    replaceAll(page, "<script async src=\"/" + name + "\">" + std::string(kScriptEnd),
               std::string(kScriptBegin) + std::string(script) + std::string(kScriptEnd));
}

}  // namespace

PageAssets::PageAssets(std::filesystem::path directory) : directory_(std::move(directory)) {
    const std::span<const EmbeddedFile> embedded(kEmbeddedFiles, kEmbeddedFileCount);
    for (const EmbeddedFile& file : embedded) {
        File& kept = files_[std::string(file.name)];
        kept.content = file.content;
        kept.version = digest(file.content).substr(0, kVersionDigits);
    }
    const std::string early = files_[kEarly].content;
    for (auto& [name, file] : files_) {
        // Pages name the others with their versions.
        if (name.ends_with(".html")) {
            // On a slow line it would come last.
            takeIn(kEarly, early, file.content);
            nameVersions(name.substr(0, name.find('/') + 1), file.content);
            file.version = digest(file.content).substr(0, kVersionDigits);
        }
        file.compressed = gzip(file.content);
    }
}

void PageAssets::nameVersions(const std::string& folder, std::string& page) const {
    for (const auto& [other, file] : files_) {
        if (!other.starts_with(folder) && !other.starts_with("shared/")) continue;
        for (const char* path : {"/console/", ""}) {
            const std::string link = "=\"" + (path + other.substr(other.find('/') + 1));
            replaceAll(page, link + "\"", link + "?v=" + file.version + "\"");
        }
    }
}

Response PageAssets::serve(std::string_view folder, std::string_view name, const Request& request) const {
    if (!isFileName(name)) return Response::error(404, "no such file");
    if (!directory_.empty()) return fromDirectory(folder, name);
    for (const std::string_view place : {folder, std::string_view("shared")}) {
        const auto found = files_.find(std::string(place) + "/" + std::string(name));
        if (found != files_.end()) return builtIn(name, found->second, request);
    }
    return Response::error(404, "no such file");
}

Response PageAssets::builtIn(std::string_view name, const File& file, const Request& request) {
    const std::string tag = '"' + file.version + '"';
    const bool isNamed = request.target.value("v") == file.version;
    Response response = page(name, file.content);
    response.headers.emplace_back("Cache-Control",
                                  isNamed ? "private, max-age=31536000, immutable" : "no-cache");
    response.headers.emplace_back("ETag", tag);
    response.headers.emplace_back("Vary", "Accept-Encoding");
    if (request.ifNoneMatch.find(tag) != std::string::npos) {
        response.status = 304;
        response.body.clear();
    } else if (request.acceptEncoding.find("gzip") != std::string::npos) {
        response.headers.emplace_back("Content-Encoding", "gzip");
        response.body = file.compressed;
    }
    return response;
}

Response PageAssets::fromDirectory(std::string_view folder, std::string_view name) const {
    for (const std::string_view place : {folder, std::string_view("shared")}) {
        std::ifstream file(directory_ / place / name, std::ios::binary);
        if (file) return page(name, {std::istreambuf_iterator<char>(file), {}});
    }
    return Response::error(404, "the directory of the pages lacks this file");
}

}  // namespace merovanta::devservice
