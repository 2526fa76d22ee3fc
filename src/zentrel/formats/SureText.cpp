#include "zentrel/formats/SureText.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/ReadBack.h"
#include "zentrel/formats/TextNumbers.h"

#include <BRepBuilderAPI_Copy.hxx>
#include <ShapeFix_Shape.hxx>
#include <span>

namespace zn::zentrel {

namespace {

/// What a first try gave, and whether it should be looked at.
struct FirstTry {
    std::string text;
    bool isDoubtful = false;
};

FirstTry tryFirst(const Model& model, const KernelTask& task, const TextWay& way)
{
    constexpr char doubt = '?';
    constexpr char trust = '.';
    FirstTry result{runInChild(task, [&] { return way.make() + (isDoubtful(model) ? doubt : trust); })};
    result.isDoubtful = result.text.back() == doubt;
    result.text.pop_back();
    result.isDoubtful |= numbersOf(result.text) != TextNumbers::Plain;
    return result;
}

/// What the kernel fails on is a fault as well.
std::string faultInChild(const std::string& text, const Model& model, const KernelTask& task, FaultOfText faultOf)
{
    if (numbersOf(text) == TextNumbers::None)
        return "numbers that are none";
    try {
        return runInChild(task, [&] { return faultOf(text, model); });
    } catch (const DocumentError& error) {
        if (error.kind() != ErrorKind::Kernel)
            throw;
        return "a failure of the geometry kernel";
    }
}

} // namespace

std::string textThatReadsBack(
    const Model& model, const KernelTask& task, const std::vector<TextWay>& ways, FaultOfText faultOf, Remarks& remarks)
{
    FirstTry first = tryFirst(model, task, ways.front());
    const std::string fault = first.isDoubtful ? faultInChild(first.text, model, task, faultOf) : std::string();
    if (fault.empty())
        return std::move(first.text);
    for (const TextWay& way : std::span(ways).subspan(1)) {
        try {
            std::string other = runInChild(task, way.make);
            if (!faultInChild(other, model, task, faultOf).empty())
                continue;
            remarks.push_back("The file " + quoted(task.file) + " was written with " + way.words
                + ", since otherwise it reads back with " + fault + ".");
            return other;
        } catch (const DocumentError& error) {
            // The kernel may fail in one way and not in the next; the first text is there.
            if (error.kind() != ErrorKind::Kernel)
                throw;
        }
    }
    first.text = requireNumbers(std::move(first.text), task.file);
    remarks.push_back("The file " + quoted(task.file) + " reads back with " + fault
        + "; no other way of writing it was better. Look at it before you pass it on.");
    return std::move(first.text);
}

TopoDS_Shape healed(const Body& body)
{
    const Handle(ShapeFix_Shape) fix = new ShapeFix_Shape(BRepBuilderAPI_Copy(body.shape).Shape());
    fix->Perform();
    return fix->Shape();
}

} // namespace zn::zentrel
