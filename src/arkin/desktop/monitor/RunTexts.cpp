#include "arkin/desktop/monitor/RunTexts.h"

#include "arkin/desktop/frame/Texts.h"

#include <algorithm>
#include <QDateTime>
#include <QLocale>

namespace zn::arkin {

QString runStateText(const RunInfo& run, std::int64_t now)
{
    RunInfo whole = run;
    whole.outputsMissing = 0;
    const auto state = stateText(whole, now);
    auto words = QCoreApplication::translate("RunState", zn::toUtf8(state).c_str());
    if (stateText(run, now) == state)
        return words;
    return own("%1, %2 of %3 failed").arg(words).arg(run.outputsMissing).arg(run.outputsExpected);
}

QString outcomeWord(zn::FileOutcome outcome)
{
    return QCoreApplication::translate("Outcome", zn::toUtf8(outcomeText(outcome)).c_str());
}

QString progressText(const RunInfo& run)
{
    if (run.progressTotal <= 0)
        return {};
    return own("%1 of %2").arg(run.progressPosition).arg(run.progressTotal);
}

QString spanText(std::int64_t seconds)
{
    const auto padded = [](std::int64_t number) { return QStringLiteral("%1").arg(number, 2, 10, QChar('0')); };
    if (seconds < 60)
        return QStringLiteral("%1 s").arg(seconds);
    if (seconds < 3600)
        return QStringLiteral("%1 min %2 s").arg(seconds / 60).arg(padded(seconds % 60));
    return QStringLiteral("%1 h %2 min").arg(seconds / 3600).arg(padded(seconds / 60 % 60));
}

QString workTimeText(const RunInfo& run, std::int64_t now)
{
    if (run.startedAt == 0)
        return {};
    const auto worked = std::max<std::int64_t>((run.ended() ? run.endedAt : now) - run.startedAt, 0);
    const bool foreseeable = run.state == zn::TaskRunState::Running && run.progressPosition > 0
        && run.progressPosition < run.progressTotal && worked > 0;
    if (!foreseeable)
        return spanText(worked);
    const auto left = worked * (run.progressTotal - run.progressPosition) / run.progressPosition;
    return own("%1, about %2 left").arg(spanText(worked), spanText(left));
}

QString momentText(std::int64_t at)
{
    return at == 0 ? QString() : QLocale().toString(QDateTime::fromSecsSinceEpoch(at), QLocale::ShortFormat);
}

} // namespace zn::arkin
