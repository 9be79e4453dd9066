#include "flfs/inspection_print.hpp"

#include "flfs/drawing.hpp"
#include "flfs/path_type_name.hpp"
#include "flfs/text.hpp"

#include <ostream>
#include <string_view>

namespace flfs {

namespace windows = fl::filesystem::detail::windows;

namespace {

constexpr std::size_t label_width = 26;

/// Prints the lines under the headings, all values in one column.
class printer
{
public:
    explicit printer(std::ostream &out) : out_(out) {}

    void heading(std::string_view title) { out_ << "\n  " << title << '\n'; }

    void line(std::string_view label, std::string_view value)
    {
        std::string padded(label);
        padded.resize(label_width, ' ');
        out_ << "    " << padded << value << '\n';
    }
    void line(std::string_view label, std::u16string const &value)
    {
        line(label, std::string_view(displayed_value(value)));
    }
    void line(std::string_view label, std::uint64_t value)
    {
        line(label, std::string_view(std::to_string(value)));
    }
    void line(std::string_view label, bool value)
    {
        line(label, std::string_view(value ? "yes" : "no"));
    }

private:
    std::ostream &out_;
};

std::string type_and_value(windows::path_type_enum type)
{
    return std::string(path_type_name(type)) + " (" + path_type_hex(type) + ')';
}

std::string units(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " unit" : " units");
}

void print_type(printer &print, kind const &answers)
{
    print.heading("Type of the text as given");
    print.line("classify_path_type", std::string_view(type_and_value(answers.classified)));
    std::string const analysed = answers.analysed.exception.empty()
                                     ? type_and_value(answers.analysed.type)
                                     : "(throws " + answers.analysed.exception + ')';
    print.line("analyse_path_root", std::string_view(analysed));
}

void print_root_lengths(printer &print, kind const &answers)
{
    print.heading("Length of its root, in UTF-16 units");
    if (answers.analysed.exception.empty())
        print.line("analyse_path_root", answers.analysed.length);
    else
        print.line("analyse_path_root", std::string_view("-"));
    print.line("get_root_path_length", answers.root_path_length);
    print.line("element_root_length", answers.element_root_length);
    if (answers.unc_root_length)
        print.line("unc_root_length", *answers.unc_root_length);
    else
        print.line("unc_root_length", std::string_view("-"));
}

void print_forms(printer &print, forms const &all)
{
    print.heading("Forms");
    print.line("native", all.native);
    print.line("generic", all.generic);
    if (all.expansion_failure)
        print.line("expanded",
                   std::string_view("(fails: " + all.expansion_failure->identifier + ", code " +
                                    std::to_string(all.expansion_failure->code) + ')'));
    else
        print.line("expanded", all.expanded);
    print.line("access", all.access);
    print.line("absolute", all.is_absolute);
    print.line("absolute when expanded", all.is_absolute_when_expanded);
}

/// The elements between bars, which no Windows name may hold.
std::string joined(std::vector<std::u16string> const &elements)
{
    std::string line;
    for (std::u16string const &element : elements) {
        line += line.empty() ? "" : " | ";
        line += displayed_value(element);
    }
    return line.empty() ? "(none)" : line;
}

void print_parts(printer &print, parts const &all)
{
    print.heading("Parts of the native form");
    print.line("root name", all.root_name);
    print.line("root directory", all.root_directory);
    print.line("root path", all.root_path);
    print.line("relative path", all.relative_path);
    print.line("parent path", all.parent_path);
    print.line("filename", all.filename);
    print.line("stem", all.stem);
    print.line("extension", all.extension);
    print.line("elements", std::string_view(joined(all.elements)));
    if (!differs_with_share_in_root(all))
        return;
    print.heading("The same by extract_pathname_elements, with share in the root");
    print.line("parent path", all.with_share_in_root.parent_path);
    print.line("filename", all.with_share_in_root.filename);
    print.line("stem", all.with_share_in_root.stem);
    print.line("extension", all.with_share_in_root.extension);
}

void print_drawing(std::ostream &out, printer &print, inspection const &one)
{
    std::vector<std::string> const lines = draw(one.forms.native, one.parts);
    if (lines.empty())
        return;
    print.heading("Drawing");
    for (std::string const &line : lines)
        out << "    " << line << '\n';
}

} // namespace

void print_inspection(std::ostream &out, inspection const &one)
{
    out << displayed_value(one.text) << "  (" << units(one.text.size()) << ")\n";
    printer print(out);
    print_type(print, one.kind);
    print_root_lengths(print, one.kind);
    print_forms(print, one.forms);
    print_parts(print, one.parts);
    print_drawing(out, print, one);
}

void print_brief_inspection(std::ostream &out, inspection const &one)
{
    out << displayed_value(one.text) << "\n    " << path_type_name(one.forms.native_type);
    if (one.kind.classified != one.forms.native_type)
        out << "; as given " << path_type_name(one.kind.classified);
    out << "\n\n";
    for (std::string const &line : draw(one.forms.native, one.parts))
        out << "    " << line << '\n';
}

} // namespace flfs
