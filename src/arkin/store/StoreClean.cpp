#include "arkin/store/StoreClean.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// When the newest version was made; 0 if there is none.
std::int64_t newestVersion(Database& database)
{
    long long time = 0;
    database.session() << "SELECT COALESCE(MAX(made_at), 0) FROM versions", soci::into(time);
    return time;
}

} // namespace

CleanReport cleanStore(Store& store, const std::function<void(std::int64_t done, std::int64_t total)>& progress)
{
    CleanReport report{checkStore(store, progress), {}};
    if (report.check.problems.empty())
        report.done = store.archive().setAside(
            neededContents(store.database()), newestVersion(store.database()), store.clock().now());
    return report;
}

} // namespace zn::arkin
