#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_json.hpp"
#include "flfs/text.hpp"

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;
namespace windows = fl::filesystem::detail::windows;
using json = nlohmann::ordered_json;

namespace {

struct forms_of_one
{
    std::u16string pathname; ///< as the user wrote it
    std::u16string native;
    bool is_clean;
    std::u16string plain;         ///< never walked through
    std::u16string resolved;      ///< or as it is
    std::u16string resolved_text; ///< of the text, which needn't be in native form
    std::optional<std::u16string> insisted;
    std::optional<failure> what_failed; ///< then there is no `insisted`
};

forms_of_one ask(std::u16string const &pathname)
{
    using namespace fs::detail;
    forms_of_one one{};
    one.pathname = pathname;
    one.native = fs::upath(pathname).native();
    std::wstring const wide = to_filesystem(one.native);
    one.is_clean = windows::is_path_clean_bridge(wide, wide.size());
    one.plain = from_filesystem(make_access_form(wide));
    one.resolved = from_filesystem(make_native_access_form(one.native));
    one.resolved_text = from_filesystem(make_native_access_form_with_cleanup(pathname));
    one.what_failed = failure_of([&one] {
        one.insisted = from_filesystem(windows::make_native_access_form_bridge(one.native));
    });
    return one;
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(forms_of_one const &one)
{
    json object = {{"pathname", escaped_surrogates(one.pathname)},
                   {"native", escaped_surrogates(one.native)},
                   {"is_clean", one.is_clean},
                   {"access_form", escaped_surrogates(one.plain)},
                   {"native_access_form", escaped_surrogates(one.resolved)},
                   {"with_cleanup", escaped_surrogates(one.resolved_text)},
                   {"bridge", nullptr},
                   {"failure", nullptr}};
    if (one.insisted)
        object["bridge"] = escaped_surrogates(*one.insisted);
    if (one.what_failed)
        object["failure"] = flfs::to_json(*one.what_failed);
    return object;
}

void print_line(std::ostream &out, char const *label, std::u16string const &value)
{
    out << "    " << label << displayed_value(value) << '\n';
}

void print(std::ostream &out, forms_of_one const &one)
{
    out << displayed_value(one.pathname) << '\n';
    out << "    clean         " << (one.is_clean ? "yes\n" : "no\n");
    print_line(out, "access form   ", one.plain);
    print_line(out, "resolved      ", one.resolved);
    print_line(out, "with cleanup  ", one.resolved_text);
    if (one.insisted)
        print_line(out, "bridge        ", *one.insisted);
}

int report_forms(session &session, std::vector<std::u16string> const &pathnames, bool as_json)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        forms_of_one const one = ask(pathname);
        if (one.what_failed)
            exit_code = exit_failure;
        if (as_json)
            array.push_back(to_json(one));
        else
            print(session.out, one);
        if (!as_json && one.what_failed)
            print_failure(session.err, *one.what_failed, pathname);
    }
    if (as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

} // namespace

void add_forms_command(CLI::App &app, session &session)
{
    CLI::App *command =
        add_command(app, "forms", "Show the strings that go to the system for a pathname",
                    R"(clean         whether a long prefix could go ahead of it as it is
access form   with a long prefix where the length needs it, and nothing else
resolved      absolute, without . and .., with a long prefix where it needs one, as most
              operations hand it over; as it is where that can't be done
with cleanup  the same of the text, brought to native form on the way
bridge        the same of the native form, insisting: else it is a failure)");
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to form");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, paths, as_json] {
        return report_forms(session, pathnames_of(*paths), *as_json);
    });
}

} // namespace flfs
