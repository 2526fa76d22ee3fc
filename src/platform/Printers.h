#pragma once

#include "base/Text.h"

#include <optional>
#include <string>
#include <vector>

namespace zn {

enum class PrinterKind {
    Local,     ///< of this machine
    Connected, ///< of another machine, set up on this one
};

struct Printer {
    Text name;
    PrinterKind kind = PrinterKind::Local;
    /// Where jobs go, for people: a machine's folder or the address of a device. May be empty.
    Text target;
    /// What stays white at each edge of the paper whatever a page holds there, in mm.
    double margin = 0.0;
};

/// Pages that are ready for paper.
struct PrintJob {
    /// For people; a printer that makes files names them so.
    Text title;
    /// A PDF of at least one page, each of the size of its paper. Copies are pages of their own, so that every printer
    /// makes them.
    std::string pdf;
    /// The paper of the first page, mm.
    double width = 0.0;
    double height = 0.0;
};

/// Why nothing is known of a printer, as a sentence: the printing system doesn't answer.
std::string silenceOver(TextView printer);

/// The machine's printers. Names are compared without regard to case.
class Printers {
public:
    virtual ~Printers() = default;

    /// Those that are set up on this machine, in an order that stays. A printing system that doesn't run or doesn't
    /// answer has none; a list takes a few seconds at most.
    virtual std::vector<Printer> list() = 0;
    /// Whether the last list lacks what a printing system has that runs and doesn't answer: a printer that isn't in it
    /// may be there all the same.
    virtual bool isSilent() const { return false; }
    /// Hands a job over whole: once this returns it will print; when it raises nothing of it is left.
    /// Raises `StatusError` with a sentence that names the printer and what to do.
    virtual void print(const Text& printer, const PrintJob& job) = 0;

    std::optional<Printer> find(TextView name);
};

} // namespace zn
