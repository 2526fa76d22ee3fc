#pragma once

#include "platform/Printers.h"

namespace zn {

/// The queues of the machine's printing system (CUPS). There are none while it doesn't run.
class CupsPrinters : public Printers {
public:
    std::vector<Printer> list() override;
    bool isSilent() const override { return m_isSilent; }
    void print(const Text& printer, const PrintJob& job) override;

private:
    bool m_isSilent = false;
};

} // namespace zn
