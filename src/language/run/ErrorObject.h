#pragma once

#include "base/Dispatch.h"
#include "language/values/Errors.h"

namespace zn::language {

/// `Err`.
class ErrorObject : public DispatchObject {
public:
    Value invoke(MemberCall& call) override;
    Text typeName() const override { return u"ErrObject"; }

    void set(const ScriptError& raised) { m_error = raised; }
    void clear() { m_error = {}; }
    const ScriptError& error() const { return m_error; }

    std::int32_t line = 0; ///< `Erl`

private:
    [[noreturn]] static void raiseFrom(const MemberCall& call);

    ScriptError m_error;
};

} // namespace zn::language
