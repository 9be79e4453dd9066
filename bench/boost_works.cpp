// Boost's facility beside the others; built only where its source is at hand.

#include "contest.hpp"

#include "texts.hpp"

#include <boost/filesystem.hpp>

namespace bench {

namespace {

namespace other = boost::filesystem;

void add(std::vector<work> &works, std::string const &name, repeated run)
{
    for (work &work : works)
        if (work.name == name)
            work.contenders.push_back({"Boost", std::move(run), work.contenders[0].prepare});
}

} // namespace

void add_boost(std::vector<work> &works, std::wstring const &folder)
{
    std::wstring const root = folder + L'\\';
    other::path const file(root + L"a-file.txt");
    add(works, "status of a file", times([file] { keep(other::status(file)); }));
    add(works, "exists", times([file] { keep(other::exists(file)); }));
    add(works, "status of a missing name",
        times([path = other::path(root + L"no-such-file.txt")] { keep(other::status(path)); }));
    add(works, "remove_all, 2,000 files in 50 directories",
        times([path = other::path(root + L"tree")] { other::remove_all(path); }));
    for (std::size_t const size : text_sizes) {
        std::u16string const text = pathname(size);
        std::wstring const wide(text.begin(), text.end());
        add(works, "walk of all elements, " + std::to_string(size) + " units", times([wide] {
                other::path const made(wide);
                for (other::path const &element : made)
                    keep(element);
            }));
    }
}

} // namespace bench
