#include "base/Status.h"

#include <new>

namespace zn {

Status currentExceptionStatus() noexcept
{
    try {
        throw;
    } catch (const StatusError& error) {
        return error.status();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

} // namespace zn
