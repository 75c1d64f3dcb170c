// Tells the starts of triggers to a script. Each line of the input is a trigger, a moment and a count, all
// numbers: kind, begin (year month day hour minute), end (year month day, or 0 0 0), interval, duration, the
// three values of the kind (those it has, else 0), the moment and the count. The answer is a line of as many
// starts from the moment on as there are, at most that count.

#include <Zelmar01/tasks/service/TriggerTimes.h>

#include <iostream>
#include <sstream>

using namespace Zelmar01;

namespace {

TASK_TRIGGER readTrigger(std::istream &input)
{
    TASK_TRIGGER trigger;
    std::uint32_t kind = 0, values[3]{};
    input >> kind >> trigger.wBeginYear >> trigger.wBeginMonth >> trigger.wBeginDay >> trigger.wStartHour >>
        trigger.wStartMinute >> trigger.wEndYear >> trigger.wEndMonth >> trigger.wEndDay >>
        trigger.MinutesInterval >> trigger.MinutesDuration >> values[0] >> values[1] >> values[2];
    trigger.TriggerType = static_cast<TASK_TRIGGER_TYPE>(kind);
    trigger.rgFlags = trigger.wEndYear > 0 ? TriggerFlag::HasEndDate : 0;
    const auto word = [&](int i) { return static_cast<std::uint16_t>(values[i]); };
    if (kind == TASK_TIME_TRIGGER_MONTHLYDATE)
        trigger.Type.MonthlyDate = {values[0], word(1)};
    else
        trigger.Type.Words = {word(0), word(1), word(2), 0};
    return trigger;
}

} // namespace

int main()
{
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream input(line);
        const TTriggerTimes times(readTrigger(input));
        TSeconds from = 0;
        int count = 0;
        input >> from >> count;
        for (; count > 0; --count) {
            const auto start = times.Next(from);
            if (start == TTriggerTimes::NoStart)
                break;
            std::cout << start << ' ';
            from = start + 1;
        }
        std::cout << '\n';
    }
}
