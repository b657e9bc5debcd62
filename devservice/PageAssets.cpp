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

constexpr std::string_view kContentSecurityPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; connect-src 'self'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

Response page(std::string_view name, std::string content) {
    return {200,
            std::string(contentType(name)),
            std::move(content),
            {{"Content-Security-Policy", std::string(kContentSecurityPolicy)},
             {"Referrer-Policy", "no-referrer"},
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

}  // namespace

PageAssets::PageAssets(std::filesystem::path directory) : directory_(std::move(directory)) {
    const std::span<const EmbeddedFile> embedded(kEmbeddedFiles, kEmbeddedFileCount);
    for (const EmbeddedFile& file : embedded) {
        File& kept = files_[std::string(file.name)];
        kept.content = file.content;
        kept.version = digest(file.content).substr(0, kVersionDigits);
    }
    for (auto& [name, file] : files_) {
        // Pages name the others with their versions.
        if (name.ends_with(".html")) {
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
    Response response = page(name, {});
    response.headers.emplace_back("Cache-Control",
                                  isNamed ? "private, max-age=31536000, immutable" : "no-cache");
    response.headers.emplace_back("ETag", tag);
    response.headers.emplace_back("Vary", "Accept-Encoding");
    if (request.ifNoneMatch.find(tag) != std::string::npos) {
        response.status = 304;
    } else if (request.acceptEncoding.find("gzip") != std::string::npos) {
        response.headers.emplace_back("Content-Encoding", "gzip");
        response.body = file.compressed;
    } else {
        response.body = file.content;
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
