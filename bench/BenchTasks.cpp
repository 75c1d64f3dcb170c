#include "Bench.h"

#include <Zelmar01/tasks/service/RunTimes.h>

#include <QDateTime>
#include <QTimeZone>

#include <array>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

using namespace Zelmar01;

namespace {

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile TSeconds sink;

constexpr int startHour = 2, startMinute = 30;

TASK_TRIGGER triggerOf(TASK_TRIGGER_TYPE kind)
{
    TASK_TRIGGER trigger;
    trigger.wBeginYear = 2020;
    trigger.wBeginMonth = 1;
    trigger.wBeginDay = 1;
    trigger.wStartHour = startHour;
    trigger.wStartMinute = startMinute;
    trigger.TriggerType = kind;
    return trigger;
}

// A kind of trigger, and how a stock calendar tells whether a date is one of its days.
struct TKindOfTrigger
{
    const char *Name;
    TASK_TRIGGER Trigger;
    std::function<bool(const QDate &)> IsDay;
};

std::vector<TKindOfTrigger> kindsOfTriggers()
{
    auto daily = triggerOf(TASK_TIME_TRIGGER_DAILY);
    daily.Type.Daily = {1};
    auto weekly = triggerOf(TASK_TIME_TRIGGER_WEEKLY);
    weekly.Type.Weekly = {2, 0b0100010};
    auto byDate = triggerOf(TASK_TIME_TRIGGER_MONTHLYDATE);
    byDate.Type.MonthlyDate = {1U << 30 | 1U << 14, 0xFFF};
    auto byWeekday = triggerOf(TASK_TIME_TRIGGER_MONTHLYDOW);
    byWeekday.Type.MonthlyDOW = {5, 0b0100000, 0xFFF};
    auto leapDay = triggerOf(TASK_TIME_TRIGGER_MONTHLYDATE);
    leapDay.Type.MonthlyDate = {1U << 28, 0b10};
    const QDate firstSunday(2019, 12, 29);
    return {
        {"daily", daily, [](const QDate &) { return true; }},
        {"every 2nd week", weekly,
         [=](const QDate &date) {
             return (date.dayOfWeek() == Qt::Monday || date.dayOfWeek() == Qt::Friday) &&
                    firstSunday.daysTo(date) / 7 % 2 == 0;
         }},
        {"15th and 31st", byDate, [](const QDate &date) { return date.day() == 15 || date.day() == 31; }},
        {"last Friday", byWeekday,
         [](const QDate &date) {
             return date.dayOfWeek() == Qt::Friday && date.day() > date.daysInMonth() - 7;
         }},
        {"29 February", leapDay, [](const QDate &date) { return date.month() == 2 && date.day() == 29; }},
    };
}

std::vector<TSeconds> randomMoments(std::size_t count)
{
    std::mt19937_64 random(1);
    std::uniform_int_distribution<TSeconds> moment(1'600'000'000, 2'400'000'000);
    std::vector<TSeconds> moments(count);
    std::generate(moments.begin(), moments.end(), [&] { return moment(random); });
    return moments;
}

TSeconds dayByDay(const TKindOfTrigger &kind, TSeconds from, const QTimeZone &zone)
{
    const auto now = QDateTime::fromSecsSinceEpoch(from, zone);
    for (auto date = now.date();; date = date.addDays(1)) {
        if (!kind.IsDay(date))
            continue;
        const QDateTime start(date, QTime(startHour, startMinute), zone);
        if (start >= now)
            return start.toSecsSinceEpoch();
    }
}

TSeconds withMktime(const TKindOfTrigger &kind, TSeconds from)
{
    const std::time_t moment = from;
    std::tm parts{};
    localtime_r(&moment, &parts);
    for (;; ++parts.tm_mday) {
        auto start = parts;
        start.tm_hour = startHour;
        start.tm_min = startMinute;
        start.tm_sec = 0;
        start.tm_isdst = -1;
        const auto seconds = std::mktime(&start);
        if (seconds >= from && kind.IsDay(QDate(start.tm_year + 1900, start.tm_mon + 1, start.tm_mday)))
            return seconds;
    }
}

template<class Next>
auto forEach(const std::vector<TSeconds> &moments, Next next)
{
    return [&moments, next] {
        for (const auto moment : moments)
            sink = next(moment);
    };
}

void benchNextRuns()
{
    setenv("TZ", "Europe/Paris", 1);
    tzset();
    const auto moments = randomMoments(1000);
    const TTimeZone utc, paris = TTimeZone::Named("Europe/Paris").value();
    const auto kinds = kindsOfTriggers();
    const auto ours = [&](const TKindOfTrigger &kind, const TTimeZone &zone) {
        return forEach(moments, [times = TRunTimes(std::span(&kind.Trigger, 1), 0), &zone](TSeconds from) {
            return times.Next(from, zone).value();
        });
    };
    for (const auto &kind : kinds) {
        const auto name = "1,000 next runs, " + std::string(kind.Name);
        const bool rare = std::string_view(kind.Name) == "29 February";
        const auto rounds = rare ? 5 : 15;
        Row(name + ", UTC")
            .Rounds(rounds)
            .Ours(ours(kind, utc))
            .Peer("QDateTime, day by day",
                  forEach(moments, [&](TSeconds from) { return dayByDay(kind, from, QTimeZone::utc()); }))
            .PeerTarget(0.1)
            .Print();
        const QTimeZone qtParis("Europe/Paris");
        Row(name + ", Paris")
            .Rounds(rounds)
            .Ours(ours(kind, paris))
            .Peer("QDateTime, day by day",
                  forEach(moments, [&](TSeconds from) { return dayByDay(kind, from, qtParis); }))
            .Limit("the same in UTC", ours(kind, utc))
            .PeerTarget(0.1)
            .LimitTarget(2)
            .Print();
        if (!rare)
            Row(name + ", Paris")
                .Rounds(rounds)
                .Ours(ours(kind, paris))
                .Peer("mktime a day", forEach(moments, [&](TSeconds from) { return withMktime(kind, from); }))
                .PeerTarget(0.1)
                .Print();
        Row(name + ", Paris")
            .Ours(ours(kind, paris))
            .Limit("those of the daily kind", ours(kinds.front(), paris))
            .LimitTarget(10)
            .Print();
    }
}

} // namespace

int main()
{
    benchNextRuns();
}
