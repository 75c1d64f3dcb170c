#pragma once

#include <algorithm>
#include <concepts>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// One row of the measured table: our work beside its peer, the best that a user of stock parts gets, and its
/// limit, the least work that must be done. Each may be missing. They are measured in turns, so that all meet
/// the same noise, and the medians count.
///
/// Measured is the time that this process computes, so that other programs do not spoil a ratio. Work that
/// waits for a device or for another process needs the time on the wall.
///
/// Work that returns something leaves it to be destroyed when the clock has stopped; work with a Prepare()
/// has it called each time before the clock runs.
///
///     Row("tabs: repaint the control")
///         .Ours([&] { ours.repaint(); })
///         .Peer("QTabWidget", [&] { theirs.repaint(); })
///         .PeerTarget(0.5)
///         .Print();
class Row
{
public:
    /// Rows of the same name, peer and limit but different sizes show how our work grows. Print the smallest
    /// first; three sizes or more.
    explicit Row(std::string what, std::size_t size = 0) : m_what(std::move(what)), m_size(size) {}

    Row &Rounds(int rounds)
    {
        m_rounds = rounds;
        return *this;
    }
    Row &WallTime()
    {
        m_clock = CLOCK_MONOTONIC;
        return *this;
    }

    template<std::invocable Work>
    Row &Ours(Work work)
    {
        m_ours = {{}, timed(std::move(work)), {}};
        return *this;
    }
    template<std::invocable Work>
    Row &Peer(std::string name, Work work)
    {
        m_peer = {std::move(name), timed(std::move(work)), {}};
        return *this;
    }
    template<std::invocable Work>
    Row &Limit(std::string name, Work work)
    {
        m_limit = {std::move(name), timed(std::move(work)), {}};
        return *this;
    }

    /// What is not a time was counted already.
    Row &Unit(std::string unit)
    {
        m_unit = std::move(unit);
        return *this;
    }
    Row &Ours(double count)
    {
        m_ours = {{}, {}, {count}};
        return *this;
    }
    Row &Peer(std::string name, double count)
    {
        m_peer = {std::move(name), {}, {count}};
        return *this;
    }
    Row &Limit(std::string name, double count)
    {
        m_limit = {std::move(name), {}, {count}};
        return *this;
    }

    /// The highest that is meant, each; 0 when none is.
    /// @{

    /// Ours divided by the peer's or the limit's.
    Row &PeerTarget(double ratio)
    {
        m_peerTarget = ratio;
        return *this;
    }
    Row &LimitTarget(double ratio)
    {
        m_limitTarget = ratio;
        return *this;
    }
    /// How much longer our work takes than at the size before, divided by how much larger the size is: 1 is
    /// in proportion.
    Row &GrowthTarget(double growth)
    {
        m_growthTarget = growth;
        return *this;
    }
    /// Ours itself, in the row's unit.
    Row &Target(double count)
    {
        m_target = count;
        return *this;
    }
    /// @}

    /// Measures, and writes the record that table.awk makes a row of.
    void Print()
    {
        for (int round = 0; round < m_rounds; ++round)
            for (auto *side : {&m_limit, &m_peer, &m_ours})
                if (side->Measure)
                    side->Took.push_back(side->Measure(m_clock));
        const bool isWall = m_clock == CLOCK_MONOTONIC;
        std::printf("%s\t%zu\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%g\t%g\t%g\t%g\n", m_what.c_str(), m_size,
                    m_unit.c_str(), isWall ? "wall" : "", median(m_ours).c_str(), m_peer.Name.c_str(),
                    median(m_peer).c_str(), m_limit.Name.c_str(), median(m_limit).c_str(), m_peerTarget,
                    m_limitTarget, m_growthTarget, m_target);
        std::fflush(stdout);
    }

private:
    struct TSide
    {
        std::string Name;
        std::function<double(clockid_t)> Measure;
        std::vector<double> Took;
    };

    static constexpr double enough = 2e6;

    static double now(clockid_t clock)
    {
        timespec time{};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
    }

    // Short work is repeated until the clock can tell it. It finds the memory as a program that has just
    // started would, whatever the work before it has left behind.
    template<class Work>
    static std::function<double(clockid_t)> timed(Work work)
    {
        return [work = std::move(work)](clockid_t clock) mutable {
#ifdef __GLIBC__
            malloc_trim(0);
#endif
            if constexpr (requires { work.Prepare(); } || !std::is_void_v<std::invoke_result_t<Work>>)
                return eachTimed(work, clock);
            else
                return timedTogether(work, clock);
        };
    }

    template<class Work>
    static double eachTimed(Work &work, clockid_t clock)
    {
        double took = 0;
        int repeats = 0;
        for (; took < enough; ++repeats) {
            if constexpr (requires { work.Prepare(); })
                work.Prepare();
            const auto start = now(clock);
            if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
                work();
                took += now(clock) - start;
            } else {
                const auto kept = work();
                took += now(clock) - start;
            }
        }
        return took / repeats;
    }

    template<class Work>
    static double timedTogether(Work &work, clockid_t clock)
    {
        for (double repeats = 1;;) {
            const auto start = now(clock);
            for (double done = 0; done < repeats; ++done)
                work();
            const auto took = now(clock) - start;
            if (took >= enough)
                return took / repeats;
            repeats *= std::clamp(1.2 * enough / std::max(took, 1.0), 2.0, 100.0);
        }
    }

    static std::string median(TSide &side)
    {
        auto &took = side.Took;
        if (took.empty())
            return {};
        const auto middle = took.begin() + static_cast<std::ptrdiff_t>(took.size() / 2);
        std::nth_element(took.begin(), middle, took.end());
        return std::to_string(*middle);
    }

    const std::string m_what;
    const std::size_t m_size;
    std::string m_unit = "ns";
    int m_rounds = 31;
    clockid_t m_clock = CLOCK_PROCESS_CPUTIME_ID;
    TSide m_ours, m_peer, m_limit;
    double m_peerTarget = 0, m_limitTarget = 0, m_growthTarget = 0, m_target = 0;
};

/// Work that needs something made ready each time, which is not measured.
template<class Prepares, class Works>
struct TPrepared
{
    Prepares Prepare;
    Works Work;
    void operator()() { Work(); }
};
