#include "zentrel/kernel/Remarks.h"

namespace zn::zentrel {

namespace {

void appendNumber(std::string& bytes, std::size_t number)
{
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

std::size_t takeNumber(std::string& bytes)
{
    std::size_t number = 0;
    bytes.copy(reinterpret_cast<char*>(&number), sizeof number, bytes.size() - sizeof number);
    bytes.resize(bytes.size() - sizeof number);
    return number;
}

} // namespace

/// Behind the bytes, which may be a gigabyte, so that nobody copies them: each sentence with its length, the number of
/// sentences.
std::string withRemarks(std::string bytes, const Remarks& remarks)
{
    for (auto remark = remarks.rbegin(); remark != remarks.rend(); ++remark) {
        bytes += *remark;
        appendNumber(bytes, remark->size());
    }
    appendNumber(bytes, remarks.size());
    return bytes;
}

Remarks takeRemarks(std::string& block)
{
    Remarks remarks(takeNumber(block));
    for (std::string& remark : remarks) {
        const std::size_t length = takeNumber(block);
        remark = block.substr(block.size() - length);
        block.resize(block.size() - length);
    }
    return remarks;
}

} // namespace zn::zentrel
