#include "base/DateText.h"

#include "base/Dates.h"

#include <chrono>
#include <ctime>
#include <optional>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <vector>

namespace zn {

namespace {

/// A number or a word, and whether a colon follows it.
struct Piece {
    int number = -1; ///< -1 for a word
    std::size_t digits = 0;
    Text word; ///< folded
    bool colon = false;
};
using Pieces = std::vector<Piece>;

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool isSeparator(char16_t unit) { return unit == u'/' || unit == u'-' || unit == u'.' || unit == u','; }
bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\u202F' || unit == u'\u00A0'; }

/// Between two pieces stands one separator or colon, or blanks, or both; nothing else.
std::optional<Pieces> piecesOf(TextView text)
{
    Pieces pieces;
    bool separated = true;
    for (std::size_t at = 0; at < text.size();) {
        if (isBlank(text[at])) {
            ++at;
            continue;
        }
        if (isSeparator(text[at]) || text[at] == u':') {
            if (separated || pieces.back().colon)
                return std::nullopt;
            pieces.back().colon = text[at] == u':';
            separated = true;
            ++at;
            continue;
        }
        const bool number = isDigit(text[at]);
        std::size_t end = at;
        while (end < text.size() && isDigit(text[end]) == number && !isBlank(text[end]) && !isSeparator(text[end])
            && text[end] != u':')
            ++end;
        Piece piece;
        piece.digits = end - at;
        if (!number)
            piece.word = foldCase(text.substr(at, end - at));
        else if (piece.digits > 4)
            return std::nullopt;
        else
            for (piece.number = 0; at < end; ++at)
                piece.number = piece.number * 10 + (text[at] - u'0');
        // "Jan. 5" has a point behind the shortened name.
        if (!number && end < text.size() && text[end] == u'.')
            ++end;
        pieces.push_back(std::move(piece));
        separated = false;
        at = end;
    }
    return separated ? std::nullopt : std::optional(std::move(pieces));
}

/// 1 to 12; 0 for another word.
int monthNamed(const Text& word)
{
    static constexpr TextView english[] = {u"january", u"february", u"march", u"april", u"may", u"june", u"july",
        u"august", u"september", u"october", u"november", u"december"};
    for (int month = 0; month < 12; ++month)
        if (word == english[month] || word == english[month].substr(0, 3))
            return month + 1;
    UErrorCode error = U_ZERO_ERROR;
    const icu::DateFormatSymbols symbols(error);
    for (const auto width : {icu::DateFormatSymbols::WIDE, icu::DateFormatSymbols::ABBREVIATED}) {
        int32_t count = 0;
        const icu::UnicodeString* names = symbols.getMonths(count, icu::DateFormatSymbols::FORMAT, width);
        for (int32_t month = 0; month < count && month < 12; ++month) {
            Text name = foldCase(TextView(names[month].getBuffer(), static_cast<std::size_t>(names[month].length())));
            if (name.ends_with(u'.'))
                name.pop_back();
            if (name == word)
                return month + 1;
        }
    }
    return 0;
}

bool isHalf(const Piece& piece) { return piece.word == u"am" || piece.word == u"pm"; }

/// Takes the time out of the pieces, which stands at their beginning or end. False if it is no time of a day.
bool takeTime(Pieces& pieces, CalendarTime& time)
{
    std::size_t first = 0;
    while (first < pieces.size() && !pieces[first].colon
        && !(pieces[first].number >= 0 && first + 1 < pieces.size() && isHalf(pieces[first + 1])))
        ++first;
    if (first == pieces.size())
        return true; // there is none
    int* const fields[] = {&time.hour, &time.minute, &time.second};
    std::size_t end = first;
    for (int* field : fields) {
        if (end == pieces.size() || pieces[end].number < 0 || pieces[end].digits > 2)
            return false;
        *field = pieces[end].number;
        if (!pieces[end++].colon)
            break;
        if (field == fields[2])
            return false; // a fourth number
    }
    if (end < pieces.size() && isHalf(pieces[end])) {
        const bool afternoon = pieces[end++].word == u"pm";
        if (time.hour < 12 && afternoon)
            time.hour += 12;
        else if (time.hour == 12 && !afternoon)
            time.hour = 0;
        else if (time.hour > 12 && !afternoon)
            return false;
    }
    if (first != 0 && end != pieces.size())
        return false;
    pieces.erase(
        pieces.begin() + static_cast<std::ptrdiff_t>(first), pieces.begin() + static_cast<std::ptrdiff_t>(end));
    return time.hour < 24 && time.minute < 60 && time.second < 60;
}

int thisYear()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local.tm_year + 1900;
}

bool isDayOf(int day, int month, int year)
{
    const auto m = static_cast<unsigned>(month);
    return day >= 1
        && std::chrono::year_month_day(
            std::chrono::year(year), std::chrono::month(m), std::chrono::day(static_cast<unsigned>(day)))
               .ok();
}

/// False for what is no year.
bool setYear(const Piece& piece, CalendarTime& time)
{
    time.year = piece.number;
    if (piece.digits <= 2)
        time.year += piece.number < 30 ? 2000 : 1900;
    return time.year >= 100;
}

bool isLong(const Piece& piece) { return piece.digits > 2; }

bool readNamed(int month, const Pieces& numbers, CalendarTime& time)
{
    time.month = month;
    if (numbers.size() == 1) {
        time.day = numbers[0].number;
        time.year = thisYear();
        if (!isLong(numbers[0]) && isDayOf(time.day, month, time.year))
            return true;
        time.day = 1;
        return setYear(numbers[0], time);
    }
    const bool yearFirst = isLong(numbers[0]) || numbers[0].number > 31;
    time.day = numbers[yearFirst ? 1 : 0].number;
    return !isLong(numbers[yearFirst ? 1 : 0]) && setYear(numbers[yearFirst ? 0 : 1], time);
}

/// Two numbers in the order of the locale, whose places they change if only so they make a month and a day.
void setMonthAndDay(int first, int second, bool dayFirst, CalendarTime& time)
{
    time.month = dayFirst ? second : first;
    time.day = dayFirst ? first : second;
    if (time.month > 12 && time.day <= 12)
        std::swap(time.month, time.day);
}

bool readNumbers(const Pieces& numbers, DateOrder order, CalendarTime& time)
{
    const bool dayFirst = order == DateOrder::DayMonthYear;
    if (numbers.size() == 2) {
        if (isLong(numbers[0]) || isLong(numbers[1])) {
            time.day = 1;
            time.month = numbers[isLong(numbers[0]) ? 1 : 0].number;
            return setYear(numbers[isLong(numbers[0]) ? 0 : 1], time);
        }
        time.year = thisYear();
        setMonthAndDay(numbers[0].number, numbers[1].number, dayFirst, time);
        return true;
    }
    if (isLong(numbers[0]) || order == DateOrder::YearMonthDay) {
        setMonthAndDay(numbers[1].number, numbers[2].number, false, time);
        return !isLong(numbers[1]) && !isLong(numbers[2]) && setYear(numbers[0], time);
    }
    setMonthAndDay(numbers[0].number, numbers[1].number, dayFirst, time);
    return !isLong(numbers[1]) && setYear(numbers[2], time);
}

bool readDay(Pieces pieces, DateOrder order, CalendarTime& time)
{
    int month = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (pieces[i].number >= 0)
            continue;
        month = monthNamed(pieces[i].word);
        if (month == 0)
            return false;
        pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(i));
        break;
    }
    for (const Piece& piece : pieces)
        if (piece.number < 0)
            return false;
    const bool read = month > 0 ? (pieces.size() == 1 || pieces.size() == 2) && readNamed(month, pieces, time)
                                : (pieces.size() == 2 || pieces.size() == 3) && readNumbers(pieces, order, time);
    return read && time.month >= 1 && time.month <= 12 && isDayOf(time.day, time.month, time.year);
}

} // namespace

DateOrder localDateOrder()
{
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(error));
    if (U_FAILURE(error))
        return DateOrder::MonthDayYear;
    const icu::UnicodeString pattern = generator->getBestPattern(u"yMd", error);
    const int32_t year = pattern.indexOf(u'y'), month = pattern.indexOf(u'M'), day = pattern.indexOf(u'd');
    if (year < month && year < day)
        return DateOrder::YearMonthDay;
    return day < month ? DateOrder::DayMonthYear : DateOrder::MonthDayYear;
}

bool readDateText(TextView text, DateOrder order, double& days)
{
    auto pieces = piecesOf(text);
    CalendarTime time;
    if (!pieces || !takeTime(*pieces, time))
        return false;
    if (!pieces->empty() && !readDay(std::move(*pieces), order, time))
        return false;
    days = dayCount(time);
    return true;
}

} // namespace zn
