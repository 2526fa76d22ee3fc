#include "zentrel/formats/KeptProjections.h"

#include "platform/Sha256.h"

#include <list>
#include <map>
#include <mutex>

namespace zn::zentrel {

namespace {

constexpr std::size_t mostKept = std::size_t{64} << 20;

std::string digestOf(std::string_view bytes)
{
    zn::Sha256 hash;
    hash.update(bytes);
    return hash.finish();
}

void append(std::string& bytes, std::initializer_list<double> numbers)
{
    for (const double number : numbers)
        bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

std::size_t sizeOf(const FineStrokes& fine)
{
    std::size_t size = 0;
    for (const Stroke& stroke : fine.strokes)
        size += sizeof stroke + stroke.points.size() * sizeof(Point2);
    return size;
}

struct Kept {
    std::string key;
    FineStrokesRef strokes;
};

std::mutex keptInUse;
std::list<Kept> allKept; // the one that was asked for last comes first
std::size_t keptSize = 0;

/// Whoever calls has `keptInUse`.
void forget(std::list<Kept>::iterator kept)
{
    keptSize -= sizeOf(*kept->strokes);
    allKept.erase(kept);
}

} // namespace

std::string viewKey(const Model& model, const gp_Dir& direction, const gp_Dir& up, bool hiddenLines)
{
    std::string text;
    append(text, {direction.X(), direction.Y(), direction.Z(), up.X(), up.Y(), up.Z(), hiddenLines ? 1.0 : 0.0});
    std::map<const char*, std::string> digests;
    for (const PlacedBody& placed : placedBodies(model)) {
        const std::string_view stream = placed.body->shape.givenStream();
        if (stream.empty())
            return {};
        std::string& digest = digests[stream.data()];
        if (digest.empty())
            digest = digestOf(stream);
        text += digest;
        for (int row = 1; row <= 3; ++row) {
            const gp_Trsf& place = placed.placement;
            append(text, {place.Value(row, 1), place.Value(row, 2), place.Value(row, 3), place.Value(row, 4)});
        }
        const Color none{-1.0, -1.0, -1.0};
        const Color color = placed.color.value_or(none);
        append(text, {color.red, color.green, color.blue});
    }
    return digestOf(text);
}

FineStrokesRef keptProjection(const std::string& key, double tolerance)
{
    const std::lock_guard turn(keptInUse);
    for (auto kept = allKept.begin(); kept != allKept.end(); ++kept) {
        if (kept->key != key || kept->strokes->tolerance > tolerance)
            continue;
        allKept.splice(allKept.begin(), allKept, kept);
        return kept->strokes;
    }
    return nullptr;
}

void keepProjection(const std::string& key, FineStrokesRef strokes)
{
    if (key.empty())
        return;
    const std::lock_guard turn(keptInUse);
    for (auto kept = allKept.begin(); kept != allKept.end(); ++kept) {
        if (kept->key == key) {
            forget(kept);
            break;
        }
    }
    keptSize += sizeOf(*strokes);
    allKept.push_front({key, std::move(strokes)});
    while (keptSize > mostKept)
        forget(std::prev(allKept.end()));
}

} // namespace zn::zentrel
