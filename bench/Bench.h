#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

/// Measures our work and what it is compared with in turns, so that both meet the same noise, and prints a
/// row: the medians in microseconds, their ratio, and whether it keeps to the target.
class Comparison
{
public:
    static void PrintHeader()
    {
        std::printf("%-44s %-34s %10s %10s %7s %7s\n", "what", "beside", "ours us", "theirs us", "ratio",
                    "target");
    }

    /// `target` is the highest ratio that is meant; 0 when none is.
    template<class Ours, class Theirs>
    static void Print(const std::string &what, const std::string &beside, double target, Ours ours,
                      Theirs theirs, int rounds = 31)
    {
        std::vector<double> oursTook, theirsTook;
        for (int round = 0; round < rounds; ++round) {
            theirsTook.push_back(microseconds(theirs));
            oursTook.push_back(microseconds(ours));
        }
        const double a = median(oursTook), b = median(theirsTook);
        const auto wanted = target > 0 ? std::to_string(target).substr(0, 4) : std::string("-");
        std::printf("%-44s %-34s %10.2f %10.2f %7.2f %7s%s\n", what.c_str(), beside.c_str(), a, b, a / b,
                    wanted.c_str(), target > 0 && a / b > target ? "  MISSED" : "");
    }

private:
    // Short work is repeated until the clock can tell it.
    template<class Work>
    static double microseconds(Work &work)
    {
        using TClock = std::chrono::steady_clock;
        int repeats = 0;
        const auto start = TClock::now();
        auto end = start;
        do {
            work();
            ++repeats;
            end = TClock::now();
        } while (end - start < std::chrono::milliseconds(2));
        return std::chrono::duration<double, std::micro>(end - start).count() / repeats;
    }

    static double median(std::vector<double> &values)
    {
        std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                         values.end());
        return values[values.size() / 2];
    }
};
