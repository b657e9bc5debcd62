#include "Secret.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <array>
#include <cstdlib>
#include <vector>

namespace merovanta::devservice {
namespace {

using Digest = std::array<unsigned char, 32>;

Digest sha256(std::string_view text) {
    Digest result{};
    // Without it nobody could be told from anybody.
    if (EVP_Digest(text.data(), text.size(), result.data(), nullptr, EVP_sha256(), nullptr) != 1)
        std::abort();
    return result;
}

template <class Bytes>
std::string hexadecimal(const Bytes& bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const unsigned char byte : bytes) {
        result += digits[byte >> 4U];
        result += digits[byte & 0xFU];
    }
    return result;
}

}  // namespace

std::string randomHex(std::size_t bytes) {
    std::vector<unsigned char> result(bytes);
    if (RAND_bytes(result.data(), static_cast<int>(bytes)) != 1) std::abort();
    return hexadecimal(result);
}

std::string digest(std::string_view text) {
    return hexadecimal(sha256(text));
}

std::string digestBase64(std::string_view text) {
    const Digest bytes = sha256(text);
    // Four characters for three bytes, and the zero that the encoder adds.
    std::array<unsigned char, (sizeof(Digest) + 2) / 3 * 4 + 1> result{};
    const int length = EVP_EncodeBlock(result.data(), bytes.data(), static_cast<int>(bytes.size()));
    return {result.begin(), result.begin() + length};
}

bool isSameSecret(std::string_view a, std::string_view b) {
    // Of the digests, so that the lengths stay untold too.
    return CRYPTO_memcmp(sha256(a).data(), sha256(b).data(), sizeof(Digest)) == 0;
}

}  // namespace merovanta::devservice
