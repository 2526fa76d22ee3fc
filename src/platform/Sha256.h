#pragma once

#include <memory>
#include <span>
#include <string>

struct evp_md_ctx_st;

namespace zn {

/// The SHA-256 of bytes that come in pieces.
class Sha256 {
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void update(std::span<const char> bytes);
    /// The hash as 64 lower-case hexadecimal digits. Ready for the next content afterwards.
    std::string finish();

private:
    void begin();

    evp_md_ctx_st* m_context;
};

} // namespace zn
