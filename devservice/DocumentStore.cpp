#include "DocumentStore.h"

#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace merovanta::devservice {
namespace {

std::string randomIdentifier() {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<unsigned char, 16> bytes{};
    if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1)
        throw std::runtime_error("no randomness for a document's address");
    std::string result;
    for (const unsigned char byte : bytes)
        result += {digits[byte >> 4U], digits[byte & 0xFU]};
    return result;
}

}  // namespace

std::string DocumentStore::add(SharedDocument document) {
    bytes_ += document.content.size();
    documents_.emplace_back(randomIdentifier(), std::move(document));
    while (documents_.size() > kMaxDocuments || bytes_ > kMaxBytes) {
        bytes_ -= documents_.front().second.content.size();
        documents_.pop_front();
    }
    return documents_.back().first;
}

const SharedDocument* DocumentStore::find(std::string_view id) const {
    const auto found = std::find_if(documents_.begin(), documents_.end(),
                                    [&](const auto& item) { return item.first == id; });
    return found == documents_.end() ? nullptr : &found->second;
}

}  // namespace merovanta::devservice
