// Drives a fuzz target with random changes of a few seeds: fuzz_x [seconds [seed]]. Every input is made from
// its number alone, so that a failure, which names the number, can be run again: fuzz_x 0 seed.

#include "Fuzz.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include <unistd.h>

namespace {

volatile std::sig_atomic_t current = 0;

std::string inputOf(unsigned number)
{
    std::mt19937 random(number);
    const auto below = [&](std::size_t limit) { return random() % std::max<std::size_t>(limit, 1); };
    const auto &seeds = FuzzSeeds();
    std::string input = seeds[below(seeds.size())];
    for (auto changes = below(12); changes > 0; --changes) {
        const auto at = below(input.size() + 1);
        switch (below(6)) {
        case 0:
            input.insert(at, 1, static_cast<char>(random()));
            break;
        case 1:
            input.erase(at, below(80));
            break;
        case 2:
            if (at < input.size())
                input[at] = static_cast<char>(random());
            break;
        case 3:
            input.insert(at, input.substr(below(input.size()), below(200)));
            break;
        case 4:
            input.insert(at, seeds[below(seeds.size())].substr(0, below(300)));
            break;
        default:
            if (at < input.size())
                input[at] = "0123456789,:#*$ \r\n"[below(18)];
            break;
        }
    }
    return input;
}

void run(unsigned number)
{
    current = static_cast<std::sig_atomic_t>(number);
    alarm(10);
    const auto input = inputOf(number);
    LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char *>(input.data()), input.size());
}

void report(int signal)
{
    // Async-signal-safe enough for a program that ends here.
    std::fprintf(stderr, "input %d: %s\n", static_cast<int>(current), signal == SIGALRM ? "hangs" : "fails");
    std::_Exit(1);
}

} // namespace

int main(int argc, char **argv)
{
    std::signal(SIGABRT, report);
    std::signal(SIGALRM, report);
    using TClock = std::chrono::steady_clock;
    const auto seconds = argc > 1 ? std::atoi(argv[1]) : 5;
    unsigned number = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    const auto end = TClock::now() + std::chrono::seconds(seconds);
    unsigned runs = 0;
    do {
        run(number++);
        ++runs;
    } while (TClock::now() < end);
    std::printf("%u inputs\n", runs);
    return 0;
}
