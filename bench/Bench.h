#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// Measures our work and what it is compared with in turns, so that both meet the same noise, and prints a
/// row: the medians in microseconds, their ratio, and whether it keeps to the target.
///
/// Work that returns something leaves it to be destroyed when the clock has stopped; work with a Prepare()
/// has it called each time before the clock runs.
class Comparison
{
public:
    static void PrintHeader()
    {
        std::printf("%-44s %-34s %10s %10s %7s %7s %7s\n", "what", "beside", "ours us", "theirs us", "ratio",
                    "target", "growth");
    }

    /// `target` is the highest ratio that is meant; 0 when none is.
    template<class Ours, class Theirs>
    static void Print(const std::string &what, const std::string &beside, double target, Ours ours,
                      Theirs theirs, int rounds = 31)
    {
        Measure(ours, theirs, rounds).Print(what, beside, target, {});
    }

private:
    friend class Series;

    struct TMedians
    {
        double Ours, Theirs;

        void Print(const std::string &what, const std::string &beside, double target,
                   std::optional<double> growth) const
        {
            const auto ratio = Ours / Theirs;
            std::printf("%-44s %-34s %10.2f %10.2f %7.2f %7s %7s%s\n", what.c_str(), beside.c_str(), Ours,
                        Theirs, ratio, shown(target > 0 ? std::optional(target) : std::nullopt).c_str(),
                        shown(growth).c_str(), target > 0 && ratio > target ? "  MISSED" : "");
            std::fflush(stdout);
        }
    };

    template<class Ours, class Theirs>
    static TMedians Measure(Ours &ours, Theirs &theirs, int rounds)
    {
        std::vector<double> oursTook, theirsTook;
        for (int round = 0; round < rounds; ++round) {
            theirsTook.push_back(microseconds(theirs));
            oursTook.push_back(microseconds(ours));
        }
        return {median(oursTook), median(theirsTook)};
    }

    // Short work is repeated until the clock can tell it. It finds the memory as a program that has just
    // started would, whatever the work before it has left behind.
    template<class Work>
    static double microseconds(Work &work)
    {
        using TClock = std::chrono::steady_clock;
#ifdef __GLIBC__
        malloc_trim(0);
#endif
        int repeats = 0;
        TClock::duration took{};
        for (auto start = TClock::now(); took < std::chrono::milliseconds(2); ++repeats) {
            if constexpr (requires { work.Prepare(); }) {
                work.Prepare();
                start = TClock::now();
            }
            if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
                work();
                const auto end = TClock::now();
                took += end - start;
                start = end;
            } else {
                {
                    const auto kept = work();
                    took += TClock::now() - start;
                }
                start = TClock::now();
            }
        }
        return std::chrono::duration<double, std::micro>(took).count() / repeats;
    }

    static double median(std::vector<double> &values)
    {
        std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                         values.end());
        return values[values.size() / 2];
    }

    static std::string shown(std::optional<double> number)
    {
        return number ? std::to_string(*number).substr(0, 4) : std::string("-");
    }
};

/// The same comparisons at several sizes, the smallest first. The last column tells how much longer our work
/// took than at the size before, divided by how much larger the size is: 1 is in proportion.
class Series
{
public:
    template<class Ours, class Theirs>
    void Print(const std::string &what, std::size_t size, const std::string &beside, double target, Ours ours,
               Theirs theirs, int rounds = 31)
    {
        const auto medians = Comparison::Measure(ours, theirs, rounds);
        const TPoint point{static_cast<double>(size), medians.Ours};
        auto &before = m_before[what + '\n' + beside];
        medians.Print(what + ", " + std::to_string(size), beside, target,
                      before ? std::optional(point.Took / before->Took / (point.Size / before->Size))
                             : std::nullopt);
        before = point;
    }

private:
    struct TPoint
    {
        double Size, Took;
    };

    std::map<std::string, std::optional<TPoint>> m_before;
};
