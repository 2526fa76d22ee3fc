#include "arkin/desktop/monitor/ScheduleTexts.h"

#include "arkin/desktop/frame/Texts.h"

namespace zn::arkin {

QString dayWord(int day)
{
    const QString words[] = {own("Sun"), own("Mon"), own("Tue"), own("Wed"), own("Thu"), own("Fri"), own("Sat")};
    return words[day];
}

QString whenText(const ScheduleTime& time)
{
    QStringList days;
    for (int day = 1; day <= 7; ++day)
        if (time.days & 1 << day % 7)
            days << dayWord(day % 7);
    return QStringLiteral("%1 %2:%3 (%4)")
        .arg(time.days == ScheduleTime::everyDay ? own("daily") : days.join(QStringLiteral(", ")))
        .arg(time.minute / 60, 2, 10, QChar('0'))
        .arg(time.minute % 60, 2, 10, QChar('0'))
        .arg(QString::fromStdString(time.zone));
}

} // namespace zn::arkin
