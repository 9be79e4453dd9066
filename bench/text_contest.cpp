#include "contest.hpp"

#include "texts.hpp"

#include <filesystem>

namespace bench {

namespace {

namespace standard = std::filesystem;

/// The standard library's path is taken apart when it is made, and not when it is walked.
void add_standard(std::vector<work> &works, std::string const &name, repeated run)
{
    for (work &work : works)
        if (work.name == name)
            work.contenders.push_back({"std", std::move(run)});
}

} // namespace

std::vector<work> text_contest()
{
    std::vector<work> works = text_works();
    for (std::size_t const size : text_sizes) {
        std::string const sized = ", " + std::to_string(size) + " units";
        std::u16string const text = pathname(size);
        std::wstring const wide(text.begin(), text.end());
        standard::path const path(wide);
        add_standard(works, "native form" + sized, times([wide] { keep(standard::path(wide)); }));
        add_standard(works, "walk of all elements" + sized, times([wide] {
                         standard::path const made(wide);
                         for (standard::path const &element : made)
                             keep(element);
                     }));
        add_standard(works, "hash" + sized, times([path] { keep(standard::hash_value(path)); }));
    }
    std::u16string const text = pathname(65);
    standard::path const path(std::wstring(text.begin(), text.end()));
    std::u16string const head_text = pathname(41);
    std::wstring const tail(head_text.begin() + 18, head_text.end());
    standard::path const head(std::wstring(head_text.begin(), head_text.end()));
    add_standard(works, "join to 65 units", times([head, tail] { keep(head / tail); }));
    add_standard(works, "filename, 65 units", times([path] { keep(path.filename()); }));
    add_standard(works, "parent, 65 units", times([path] { keep(path.parent_path()); }));
    add_standard(works, "extension, 65 units", times([path] { keep(path.extension()); }));
    return works;
}

} // namespace bench
