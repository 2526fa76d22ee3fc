#include "platform/Sha256.h"

#include <new>
#include <openssl/evp.h>
#include <stdexcept>

namespace zn {

namespace {

void mustSucceed(int result)
{
    if (result != 1)
        throw std::runtime_error("The hash function failed.");
}

} // namespace

Sha256::Sha256()
    : m_context(EVP_MD_CTX_new())
{
    if (!m_context)
        throw std::bad_alloc();
    begin();
}

Sha256::~Sha256() { EVP_MD_CTX_free(m_context); }

void Sha256::begin() { mustSucceed(EVP_DigestInit_ex(m_context, EVP_sha256(), nullptr)); }

void Sha256::update(std::span<const char> bytes)
{
    mustSucceed(EVP_DigestUpdate(m_context, bytes.data(), bytes.size()));
}

std::string Sha256::finish()
{
    unsigned char digest[32];
    mustSucceed(EVP_DigestFinal_ex(m_context, digest, nullptr));
    begin();
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * sizeof digest);
    for (const unsigned char byte : digest) {
        text.push_back(digits[byte >> 4]);
        text.push_back(digits[byte & 15]);
    }
    return text;
}

} // namespace zn
