// Which of the changes that scripts/mutate compiled in is in force, and which were reached. A
// shared library, so that a program and the library that it loads share both.

#include <cstdio>
#include <cstdlib>
#include <ctime>

#define FL_SHARED __attribute__((visibility("default")))

extern "C" {
FL_SHARED int fl_chosen_mutant = -1;
FL_SHARED unsigned char fl_reached_mutants[FL_MUTANTS];
}

namespace {

/// Ahead of whatever the library does before main: what it is linked to starts first.
struct chooser
{
    chooser()
    {
        if (char const *const chosen = std::getenv("FL_MUTANT"))
            fl_chosen_mutant = std::atoi(chosen);
    }

    /// Adds the seconds of the processor's time and the reached ones to the file that
    /// FL_MUTANTS_REACHED names; a program may have children.
    ~chooser()
    {
        char const *const name = std::getenv("FL_MUTANTS_REACHED");
        std::FILE *const file = name ? std::fopen(name, "a") : nullptr;
        if (!file)
            return;
        std::fprintf(file, "%.3f\n", static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
        for (int number = 0; number < FL_MUTANTS; ++number) {
            if (fl_reached_mutants[number])
                std::fprintf(file, "%d\n", number);
        }
        std::fclose(file);
    }
} const the_chooser;

} // namespace
