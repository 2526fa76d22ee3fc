#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace zn {

/// A result code: negative is a failure, 0 is success, 1 means nothing to do, stopped by the user, or no such variable.
using Status = std::int32_t;

inline constexpr Status S_OK = 0;
inline constexpr Status S_FALSE = 1;

constexpr Status statusCode(std::uint32_t bits) { return static_cast<Status>(bits); }

inline constexpr Status E_NOTIMPL = statusCode(0x80004001);
inline constexpr Status E_NOINTERFACE = statusCode(0x80004002);
inline constexpr Status E_POINTER = statusCode(0x80004003);
inline constexpr Status E_ABORT = statusCode(0x80004004);
inline constexpr Status E_FAIL = statusCode(0x80004005);
inline constexpr Status E_UNEXPECTED = statusCode(0x8000FFFF);
inline constexpr Status E_ACCESSDENIED = statusCode(0x80070005);
inline constexpr Status E_OUTOFMEMORY = statusCode(0x8007000E);
inline constexpr Status E_INVALIDARG = statusCode(0x80070057);
inline constexpr Status REGDB_E_CLASSNOTREG = statusCode(0x80040154);
inline constexpr Status CLASS_E_CLASSNOTAVAILABLE = statusCode(0x80040111);
inline constexpr Status DISP_E_MEMBERNOTFOUND = statusCode(0x80020003);
inline constexpr Status DISP_E_TYPEMISMATCH = statusCode(0x80020005);
inline constexpr Status DISP_E_OVERFLOW = statusCode(0x8002000A);
inline constexpr Status DISP_E_BADINDEX = statusCode(0x8002000B);
inline constexpr Status DISP_E_BADPARAMCOUNT = statusCode(0x8002000E);
/// The peer process has gone, or closed the connection in the middle of a call.
inline constexpr Status RPC_E_DISCONNECTED = statusCode(0x80010108);

constexpr bool failed(Status status) { return status < 0; }

/// How a failure travels inside a flow. `what()` is UTF-8 text for a person; it may be empty.
class StatusError : public std::runtime_error {
public:
    explicit StatusError(Status status, const std::string& text = {})
        : std::runtime_error(text)
        , m_status(status)
    {
    }

    Status status() const { return m_status; }

private:
    Status m_status;
};

/// Raises a negative status, with `text` as its description.
inline void checkStatus(Status status, const char* text = "")
{
    if (failed(status))
        throw StatusError(status, text);
}

/// The status that stands for the exception now being handled: a `StatusError`'s own,
/// `E_OUTOFMEMORY` for exhausted memory, `E_UNEXPECTED` for anything unforeseen.
/// To be called inside a `catch` block only.
Status currentExceptionStatus() noexcept;

} // namespace zn
