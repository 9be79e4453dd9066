// What operations do on ever larger trees of the simulated machine, counted: the calls that
// they make and how often they take memory, the system's own left out. Prints JSON.
//
//     growth [--most=N]

#include <fl/filesystem.hpp>

#include <simulation/machine.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <string_view>

namespace {

std::size_t allocations = 0;

} // namespace

void *operator new(std::size_t size)
{
    if (!simulation::is_in_call())
        ++allocations;
    if (void *const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

using namespace fl::filesystem;
using simulation::simulated_machine;

std::u16string units(std::size_t number)
{
    std::string const digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

/// Files in directories of a hundred.
void add_tree(simulated_machine &machine, std::size_t entries)
{
    for (std::size_t entry = 0; entry < entries; ++entry)
        machine.add_file(uR"(C:\tree\directory-)" + units(entry / 100) + u"\\a-file-" +
                         units(entry));
}

/// A chain of directories, and of links each of which leads to the next.
void add_chain(simulated_machine &machine, std::size_t entries)
{
    std::u16string path = uR"(\\?\C:\d)";
    for (std::size_t level = 1; level < entries; ++level)
        path += u"\\d";
    machine.add_directory(path);
}

std::u16string chain_of(std::size_t entries)
{
    std::u16string path = uR"(C:\d)";
    for (std::size_t level = 1; level < entries; ++level)
        path += u"\\d";
    return path;
}

void add_links(simulated_machine &machine, std::size_t entries)
{
    machine.add_directory(uR"(C:\link-)" + units(entries));
    for (std::size_t link = 0; link < entries; ++link)
        machine.add_symbolic_link(uR"(C:\link-)" + units(link), u"link-" + units(link + 1),
                                  simulation::flavour::directory);
}

struct operation
{
    char const *name;
    std::vector<std::size_t> sizes;
    std::function<void(simulated_machine &, std::size_t)> add;
    std::function<void(std::size_t)> run;
};

std::vector<std::size_t> const many = {1000, 3000, 10000, 30000, 100000};

operation const operations[] = {
    {"remove_all", many, add_tree, [](std::size_t) { remove_all(uR"(C:\tree)"); }},
    {"copy", many, add_tree,
     [](std::size_t) {
         copy(uR"(C:\tree)", uR"(C:\copy)", std::filesystem::copy_options::recursive);
     }},
    {"recursive listing", many, add_tree,
     [](std::size_t) {
         for (directory_entry const &entry : recursive_directory_iterator(uR"(C:\tree)"))
             static_cast<void>(entry.attributes());
     }},
    {"canonical, by elements",
     {100, 200, 400, 800, 1600},
     add_chain,
     [](std::size_t entries) { canonical(chain_of(entries)); }},
    {"canonical, by links",
     {10, 20, 40, 80, 100},
     add_links,
     [](std::size_t) { canonical(uR"(C:\link-0)"); }},
};

/// Counts without the journal, which would take gigabytes: each call is met by a hook.
void count(operation const &measured, std::size_t entries, bool is_last)
{
    simulated_machine machine;
    machine.keep_journal(false);
    measured.add(machine, entries);
    std::size_t const calls_before = simulation::calls_made();
    std::size_t const allocations_before = allocations;
    measured.run(entries);
    std::printf("[%zu, %zu, %zu]%s", entries, simulation::calls_made() - calls_before,
                allocations - allocations_before, is_last ? "" : ", ");
}

} // namespace

int main(int argument_count, char **arguments)
{
    std::size_t most = 100000;
    for (int at = 1; at < argument_count; ++at)
        if (std::string_view(arguments[at]).starts_with("--most="))
            most = std::strtoul(arguments[at] + 7, nullptr, 10);
    std::printf("{\"columns\": [\"entries\", \"calls\", \"allocations\"], \"operations\": {\n");
    for (operation const &measured : operations) {
        std::printf("  \"%s\": [", measured.name);
        std::vector<std::size_t> sizes = measured.sizes;
        std::erase_if(sizes, [most](std::size_t size) { return size > most; });
        for (std::size_t const size : sizes)
            count(measured, size, size == sizes.back());
        std::printf("]%s\n", &measured == std::end(operations) - 1 ? "" : ",");
        std::fflush(stdout);
    }
    std::printf("}}\n");
}
