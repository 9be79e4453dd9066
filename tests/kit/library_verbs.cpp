#include "kit/library_verbs.hpp"

#include "platform/links.hpp"

#include <fl/filesystem.hpp>

#include <algorithm>
#include <stdexcept>

namespace kit {

using contract::units;
using contract::wide;
using contract::facts::stage;
using contract::facts::verb_table;
using contract::facts::words;

namespace {

std::string in_words(bool is_so)
{
    return is_so ? "yes" : "no";
}

std::string names_in(std::u16string const &directory)
{
    std::vector<std::u16string> names;
    for (auto const &entry : fl::filesystem::directory_iterator(directory))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    std::string joined;
    for (std::u16string const &name : names)
        joined += (joined.empty() ? "" : "|") + contract::facts::narrowed(wide(name));
    return joined;
}

/// The class alone, without the family that all belong to.
std::string told(fl::filesystem::FsysExceptionBase const &failure)
{
    std::string const identifier = failure.what();
    std::string const name = identifier.substr(identifier.rfind(':') + 1);
    unsigned int const code = failure.get_error_code();
    return code == 0 ? name : name + '(' + std::to_string(code) + ')';
}

using operation = std::string (*)(stage &, std::u16string const &, std::u16string const &);

/// A pathname that comes back, as scripts write it.
std::string pathname(stage &on, std::u16string const &returned)
{
    return on.shown(wide(returned));
}

template <typename Call>
std::string done(Call call)
{
    call();
    return "ok";
}

DWORD our(stage &on, words const &said, std::string &answer)
{
    using text = std::u16string const &;
    static std::map<std::string, operation> const operations = {
        {"create_directory",
         [](stage &, text a, text) { return done([&] { fl::filesystem::create_directory(a); }); }},
        {"create_directories",
         [](stage &, text a, text) {
             return done([&] { fl::filesystem::create_directories(a); });
         }},
        {"remove_file",
         [](stage &, text a, text) { return done([&] { fl::filesystem::remove_file(a); }); }},
        {"remove_all",
         [](stage &, text a, text) { return done([&] { fl::filesystem::remove_all(a); }); }},
        {"copy_file",
         [](stage &, text a, text b) { return done([&] { fl::filesystem::copy_file(a, b); }); }},
        {"exists", [](stage &, text a, text) { return in_words(fl::filesystem::exists(a)); }},
        {"equivalent",
         [](stage &, text a, text b) { return in_words(fl::filesystem::equivalent(a, b)); }},
        {"list", [](stage &, text a, text) { return names_in(a); }},
        {"canonical", [](stage &on_stage, text a,
                         text) { return pathname(on_stage, fl::filesystem::canonical(a)); }},
        {"read_symlink", [](stage &on_stage, text a,
                            text) { return pathname(on_stage, fl::filesystem::read_symlink(a)); }},
        {"unc", [](stage &on_stage, text a,
                   text) { return pathname(on_stage, fl::filesystem::get_unc_path(a, true)); }},
    };
    std::u16string const one = units(on.text(said.at(2)));
    std::u16string const other = said.size() > 3 ? units(on.text(said[3])) : std::u16string();
    try {
        answer = operations.at(said.at(1))(on, one, other);
    } catch (fl::filesystem::FsysExceptionBase const &failure) {
        answer = told(failure);
    }
    return contract::success;
}

} // namespace

verb_table library_verbs()
{
    return {{"our", &our}};
}

} // namespace kit
