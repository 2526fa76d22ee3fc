#include "base/Paths.h"

namespace zn {

namespace {

bool isSeparator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

std::size_t lastComponent(TextView path)
{
    const std::size_t separator = path.find_last_of(u"\\/");
    return separator == TextView::npos ? 0 : separator + 1;
}

/// Length of "C:\", "C:" or "\\server\share\" at the beginning.
std::size_t rootLength(TextView path)
{
    if (startsWithDrive(path))
        return path.size() > 2 && isSeparator(path[2]) ? 3 : 2;
    if (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1])) {
        const std::size_t server = path.find_first_of(u"\\/", 2);
        const std::size_t share = server == TextView::npos ? server : path.find_first_of(u"\\/", server + 1);
        return share == TextView::npos ? path.size() : share + 1;
    }
    return !path.empty() && isSeparator(path[0]) ? 1 : 0;
}

} // namespace

Text pathFileName(TextView path) { return Text(path.substr(lastComponent(path))); }

Text pathExtension(TextView path)
{
    const TextView name = path.substr(lastComponent(path));
    const std::size_t dot = name.rfind(u'.');
    return dot == TextView::npos ? Text() : Text(name.substr(dot));
}

Text pathStem(TextView path)
{
    const TextView name = path.substr(lastComponent(path));
    return Text(name.substr(0, name.rfind(u'.')));
}

Text pathFolder(TextView path)
{
    const std::size_t root = rootLength(path);
    const std::size_t component = lastComponent(path);
    if (component <= root)
        return Text(path.substr(0, root));
    return withoutTrailingSeparators(path.substr(0, component));
}

Text textBehindLastDot(TextView path)
{
    const std::size_t dot = path.rfind(u'.');
    return Text(dot == TextView::npos ? path : path.substr(dot + 1));
}

Text pathWithExtension(TextView path, TextView extension)
{
    const Text old = pathExtension(path);
    return Text(path.substr(0, path.size() - old.size())).append(extension);
}

Text pathAppend(TextView path, TextView more)
{
    if (more.empty())
        return Text(path);
    if (path.empty() || isAbsolutePath(more))
        return Text(more);
    Text out(path);
    if (!isSeparator(out.back()))
        out.push_back(u'\\');
    return out.append(isSeparator(more.front()) ? more.substr(1) : more);
}

bool isAbsolutePath(TextView path) { return rootLength(path) >= 2; }

bool startsWithDrive(TextView path)
{
    const auto isLetter = [](char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); };
    return path.size() >= 2 && path[1] == u':' && isLetter(path[0]);
}

Text canonicalPath(TextView path)
{
    const std::size_t root = rootLength(path);
    Text out(path.substr(0, root));
    std::vector<Text> parts;
    for (std::size_t start = root; start <= path.size();) {
        const std::size_t end = std::min(path.find_first_of(u"\\/", start), path.size());
        const TextView part = path.substr(start, end - start);
        if (part == u"..") {
            if (!parts.empty())
                parts.pop_back();
        } else if (!part.empty() && part != u".") {
            parts.emplace_back(part);
        }
        start = end + 1;
    }
    for (char16_t& unit : out)
        unit = unit == u'/' ? u'\\' : unit;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            out.push_back(u'\\');
        out.append(parts[i]);
    }
    return out;
}

Text withoutTrailingSeparators(TextView path)
{
    const std::size_t root = rootLength(path);
    while (path.size() > root && isSeparator(path.back()))
        path.remove_suffix(1);
    return Text(path);
}

bool isInFolder(TextView path, TextView folder)
{
    const Text trimmed = withoutTrailingSeparators(folder);
    return startsWithNoCase(path, trimmed)
        && (path.size() == trimmed.size() || isSeparator(path[trimmed.size()])
            || (!trimmed.empty() && isSeparator(trimmed.back())));
}

} // namespace zn
