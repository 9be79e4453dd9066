// Each work is done by one contender after the other, round by round, so that what else the
// machine does meets all of them alike. What counts is the ratio to the floor within a round,
// and of those the median.
//
//     contest FOLDER [--smoke] [--rounds=N] [--only=TEXT]
//
// makes FOLDER, prints JSON, and removes FOLDER. A smoke does everything once.

#include "contest.hpp"

#include "raw_calls.hpp"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

namespace {

using bench::contender;
using bench::work;

double now()
{
    LARGE_INTEGER count = {};
    LARGE_INTEGER frequency = {};
    ::QueryPerformanceCounter(&count);
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double seconds(contender const &who, long count)
{
    if (who.prepare)
        who.prepare();
    double const begin = now();
    who.run(count);
    return now() - begin;
}

/// How often the work is done at once: for about a millisecond, or once if it must be prepared.
long batch_of(contender const &who, bool is_smoke)
{
    if (is_smoke || who.prepare)
        return 1;
    constexpr double enough = 0.001;
    long count = 1;
    while (seconds(who, count) < enough && count < 1L << 24)
        count *= 2;
    return count;
}

/// What the work once takes. Of what needs no preparation the best of three, since whoever else
/// runs on the machine only ever makes it slower.
double sample(contender const &who, long batch)
{
    double best = seconds(who, batch);
    for (int again = 0; again < 2 && batch > 1; ++again)
        best = std::min(best, seconds(who, batch));
    return best / static_cast<double>(batch);
}

double quantile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5)];
}

/// The ratios of each contender to the first, one for each round.
std::vector<std::vector<double>> run(work const &work, int rounds)
{
    std::vector<long> batches;
    for (contender const &who : work.contenders)
        batches.push_back(batch_of(who, rounds == 1));
    std::vector<std::vector<double>> ratios(work.contenders.size());
    if (rounds > 1) // nobody pays for having been first
        for (std::size_t at = 0; at < work.contenders.size(); ++at)
            sample(work.contenders[at], batches[at]);
    for (int round = 0; round < rounds; ++round) {
        double floor = 0;
        for (std::size_t at = 0; at < work.contenders.size(); ++at) {
            double const taken = sample(work.contenders[at], batches[at]);
            if (at == 0)
                floor = taken;
            ratios[at].push_back(taken / floor);
        }
    }
    return ratios;
}

void print(work const &work, int rounds, bool is_last)
{
    // what is done quickly is done more often
    bool const is_quick = rounds > 1 && !work.contenders.front().prepare;
    auto const ratios = run(work, is_quick ? 2 * rounds + 1 : rounds);
    std::printf("  {\"name\": \"%s\", \"target\": %g, \"contenders\": {", work.name.c_str(),
                work.target);
    for (std::size_t at = 0; at < ratios.size(); ++at)
        std::printf("%s\"%s\": [%.4f, %.4f, %.4f]", at == 0 ? "" : ", ",
                    work.contenders[at].name.c_str(), quantile(ratios[at], 0.25),
                    quantile(ratios[at], 0.5), quantile(ratios[at], 0.75));
    std::printf("}}%s\n", is_last ? "" : ",");
    std::fflush(stdout);
}

void contest(std::wstring const &folder, int rounds, std::string_view only)
{
    std::vector<work> works = bench::disk_works(folder, rounds == 1);
    for (work &text : bench::text_contest())
        works.push_back(std::move(text));
#ifdef FL_BENCH_WITH_BOOST
    bench::add_boost(works, folder);
#endif
    std::erase_if(works,
                  [only](work const &work) { return work.name.find(only) == std::string::npos; });
    std::printf("{\"rounds\": %d, \"works\": [\n", rounds);
    for (work const &work : works)
        print(work, rounds, &work == &works.back());
    std::printf("]}\n");
}

} // namespace

int main(int count, char **arguments)
{
    int rounds = 15;
    std::string_view only;
    std::wstring folder;
    for (int at = 1; at < count; ++at) {
        std::string_view const argument = arguments[at];
        if (argument == "--smoke")
            rounds = 1;
        else if (argument.starts_with("--rounds="))
            rounds = std::max(1, std::atoi(arguments[at] + 9));
        else if (argument.starts_with("--only="))
            only = argument.substr(7);
        else
            folder.assign(argument.begin(), argument.end());
    }
    if (folder.empty() || !::CreateDirectoryW(folder.c_str(), nullptr)) {
        std::fprintf(stderr, "contest needs the name of a folder that isn't there\n");
        return 2;
    }
    int status = 0;
    try {
        contest(folder, rounds, only);
    } catch (std::exception const &failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        status = 1;
    }
    bench::raw::remove_tree(folder);
    return status;
}
