#include "behaviour/trials.hpp"

#include "behaviour/scene.hpp"

#include <fl/filesystem/operations.hpp>

#include <sstream>

namespace behaviour {

namespace {

using namespace fl::filesystem;
using text = std::u16string;

std::string answer(bool value)
{
    return value ? "true" : "false";
}

std::string type_words(unsigned int type)
{
    switch (type) {
    case file_status::file_not_found:
        return "not found";
    case file_status::regular_file:
        return "regular file";
    case file_status::directory_file:
        return "directory";
    case file_status::symlink_file:
        return "symbolic link";
    case file_status::reparse_file:
        return "other reparse point";
    default:
        return "unknown";
    }
}

std::string words_of(file_status const &status)
{
    if (!file_status::exists(status))
        return "not found";
    std::ostringstream words;
    words << type_words(status.get_type()) << ", 0" << std::oct
          << (status.get_perms() & file_status::perms_all);
    return words.str();
}

/// An operation without a result.
template <typename Operation>
auto silently(Operation operation)
{
    return [operation](text const &p) {
        operation(p);
        return std::string();
    };
}

family queries()
{
    return {"Asking about a name",
            {
                {"status(p)", [](text const &p) { return words_of(status(p)); }},
                {"symlink_status(p)", [](text const &p) { return words_of(symlink_status(p)); }},
                {"status_express_light(p)",
                 [](text const &p) { return type_words(status_express_light(p).get_type()); }},
                {"exists(p)", [](text const &p) { return answer(exists(p)); }},
                {"access(p, access_exists)",
                 [](text const &p) { return answer(access(p, access_exists)); }},
                {"access(p, access_read)",
                 [](text const &p) { return answer(access(p, access_read)); }},
                {"access(p, access_write)",
                 [](text const &p) { return answer(access(p, access_write)); }},
                {"read_symlink(p)", [](text const &p) { return shown(read_symlink(p)); }},
                {"equivalent(p, file.txt)",
                 [](text const &p) { return answer(equivalent(p, at_home(u"file.txt"))); }},
                {"space(p)",
                 [](text const &p) { return std::to_string(space(upath(p)).capacity) + " bytes"; }},
            }};
}

family pathnames()
{
    return {
        "Making one pathname of another",
        {
            {"absolute(p)", [](text const &p) { return shown(absolute(p)); }},
            {"canonical(p)", [](text const &p) { return shown(canonical(p)); }},
            {"weakly_canonical(p)", [](text const &p) { return shown(weakly_canonical(p)); }},
            {"relative(p, home)", [](text const &p) { return shown(relative(p, home())); }},
            {"get_unc_path(p, true)", [](text const &p) { return shown(get_unc_path(p, true)); }},
        }};
}

family making()
{
    return {"Making something",
            {
                {"create_directory(p)", silently([](text const &p) { create_directory(p); })},
                {"create_directories(p)", silently([](text const &p) { create_directories(p); })},
                {"create_symlink(p, new, file_type_auto)", silently([](text const &p) {
                     create_symlink(p, at_home(u"new"), file_status::file_type_auto);
                 })},
                {"create_symlink(file.txt, p, regular_file)", silently([](text const &p) {
                     create_symlink(at_home(u"file.txt"), p, file_status::regular_file);
                 })},
                {"copy_symlink(p, new)",
                 silently([](text const &p) { copy_symlink(p, at_home(u"new")); })},
                {"create_shortcut(file.txt, p)",
                 silently([](text const &p) { create_shortcut(at_home(u"file.txt"), p); })},
                {"create_shortcut(p, new.lnk)",
                 silently([](text const &p) { create_shortcut(p, at_home(u"new.lnk")); })},
            }};
}

family copying()
{
    using std::filesystem::copy_options;
    return {
        "Copying and renaming",
        {
            {"copy(p, new)", silently([](text const &p) { copy(p, at_home(u"new")); })},
            {"copy(p, new, copy_symlinks)", silently([](text const &p) {
                 copy(p, at_home(u"new"), copy_options::copy_symlinks);
             })},
            {"copy(other.txt, p)", silently([](text const &p) { copy(at_home(u"other.txt"), p); })},
            {"copy_file(p, new)", silently([](text const &p) { copy_file(p, at_home(u"new")); })},
            {"copy_file(other.txt, p, overwrite_existing)", silently([](text const &p) {
                 copy_file(at_home(u"other.txt"), p, copy_options::overwrite_existing);
             })},
            {"copy_directory(p, new)",
             silently([](text const &p) { copy_directory(p, at_home(u"new")); })},
            {"rename(p, new)", silently([](text const &p) { rename(p, at_home(u"new")); })},
            {"rename(other.txt, p)",
             silently([](text const &p) { rename(at_home(u"other.txt"), p); })},
        }};
}

family changing()
{
    return {"Changing and removing",
            {
                {"permissions(p, 0)", silently([](text const &p) { permissions(p, 0); })},
                {"permissions(p, perms_symlink)",
                 silently([](text const &p) { permissions(p, file_status::perms_symlink); })},
                {"change_current_path(p)",
                 [](text const &p) {
                     bool const changed = change_current_path(p);
                     return answer(changed) + ", in " + shown(get_current_path());
                 }},
                {"remove(p)", silently([](text const &p) { remove(p); })},
                {"remove_file(p)", silently([](text const &p) { remove_file(p); })},
                {"remove_directory(p)", silently([](text const &p) { remove_directory(p); })},
                {"remove_all(p)", silently([](text const &p) { remove_all(p); })},
            }};
}

} // namespace

std::vector<family> families()
{
    return {queries(), pathnames(), making(), copying(), changing()};
}

} // namespace behaviour
