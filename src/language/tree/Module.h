#pragma once

#include "language/tree/Steps.h"

#include <unordered_map>

namespace zn::language {

/// Keys are folded names.
using NameMap = std::unordered_map<Text, int>;

/// Bounds of a fixed array.
struct FixedBound {
    std::int32_t lower = 0;
    std::int32_t upper = 0;
};

struct Variable {
    Text name;
    Type type;
    Position position;
    Text className;                     ///< what `New` makes
    std::vector<BoundsExpr> boundExprs; ///< emptied by the resolver, which fills `bounds`
    std::vector<FixedBound> bounds;     ///< none for a dynamic array
    ExprRef lengthExpr;                 ///< of a `String * n`; likewise
    int staticSlot = -1;                ///< a `Static` local lives in this global slot
};

struct Parameter {
    bool byRef = true;
    bool optional = false;
    bool paramArray = false;
    bool any = false;    ///< `As Any` of a declared function
    ExprRef defaultExpr; ///< a literal after resolving, or null
};

struct Constant {
    Text name;
    Position position;
    Type type;
    ExprRef value; ///< a literal once `done`
    bool done = false;
    bool underway = false;
    int after = -1; ///< a member of an enumeration without a value is one more than this constant
};

struct Label {
    int step = -1; ///< -1 until it is met
    Position firstUse;
};

struct Procedure {
    Text name;
    Position position;
    bool isFunction = false;
    bool isStatic = false;
    Type result;
    std::vector<Parameter> parameters; ///< the first slots
    int resultSlot = -1;
    std::vector<Variable> locals; ///< all slots: parameters, result, variables, hidden ones
    std::vector<Step> steps;
    std::vector<std::pair<int, std::int32_t>> lineNumbers; ///< step and number of each numbered line, in order

    NameMap localNames;
    std::vector<Constant> constants;
    NameMap constantNames;
    int requiredParameters() const;
    bool takesRest() const { return !parameters.empty() && parameters.back().paramArray; }
};

struct DeclaredFunction {
    Text name;
    Position position;
    Text library;
    Text entry;
    bool isFunction = false;
    Type result;
    std::vector<Variable> parameterVariables;
    std::vector<Parameter> parameters;
};

struct RecordType {
    Text name;
    Position position;
    std::vector<Variable> fields;
    NameMap fieldNames;
};

struct Module {
    std::vector<Text> lines;
    std::vector<Variable> globals;
    std::vector<Procedure> procedures;
    std::vector<DeclaredFunction> functions;
    std::vector<RecordType> records;
    std::vector<Constant> constants;

    NameMap globalNames;
    NameMap procedureNames;
    NameMap functionNames;
    NameMap recordNames;
    NameMap constantNames;
    NameMap enumNames; ///< the values mean nothing

    bool explicitNames = false;
    bool compareText = false;
    std::int32_t arrayBase = 0;
};

/// The index of a name, or -1.
inline int indexOf(const NameMap& names, TextView name)
{
    const auto hit = names.find(foldCase(name));
    return hit != names.end() ? hit->second : -1;
}

} // namespace zn::language
