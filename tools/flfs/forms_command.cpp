#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command.hpp"
#include "flfs/text.hpp"

namespace flfs {

namespace {

answer ask(arguments const &about)
{
    using namespace fl::filesystem::detail;
    std::u16string const native = fl::filesystem::upath(about.front()).native();
    std::wstring const wide = to_filesystem(native);
    bool const is_clean = windows::is_path_clean_bridge(wide, wide.size());
    std::u16string const plain = from_filesystem(make_access_form(wide)); // never walked through
    std::u16string const resolved = from_filesystem(make_native_access_form(native));
    std::u16string const of_text =
        from_filesystem(make_native_access_form_with_cleanup(about.front()));
    facts lines(14);
    lines.add("clean", is_clean ? "yes" : "no")
        .add("access form", plain)
        .add("resolved", resolved)
        .add("with cleanup", of_text);
    answer one;
    one.values = {{"native", to_json(native)},
                  {"is_clean", is_clean},
                  {"access_form", to_json(plain)},
                  {"native_access_form", to_json(resolved)},
                  {"with_cleanup", to_json(of_text)}};
    one.what_failed = failure_of([&] {
        std::u16string const insisted =
            from_filesystem(windows::make_native_access_form_bridge(native));
        lines.add("bridge", insisted);
        one.values["bridge"] = to_json(insisted);
    });
    one.text = displayed_value(about.front()) + '\n' + lines.text();
    return one;
}

} // namespace

void add_forms_command(CLI::App &app, session &session)
{
    command forms(app, session, "forms", "Show the strings that go to the system for a pathname",
                  R"(clean         whether a long prefix could go ahead of it as it is
access form   with a long prefix where the length needs it, and nothing else
resolved      absolute, without . and .., with a long prefix where it needs one, as most
              operations hand it over; as it is where that can't be done
with cleanup  the same of the text, brought to native form on the way
bridge        the same of the native form, insisting: else it is a failure)");
    option const paths = forms.words("PATH", "pathname to form");
    forms.answers(each(paths), {{"native", "is_clean", "access_form", "native_access_form",
                                 "with_cleanup", "bridge"},
                                ask});
}

} // namespace flfs
