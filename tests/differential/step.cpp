#include "differential/step.hpp"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace differential {

namespace {

/// From this length on, one unit again and again is written with its count.
constexpr std::size_t shortest_run = 9;

struct mark
{
    char16_t unit;
    char const *name;
};

constexpr mark marks[] = {{folder_mark, "folder"}, {rooted_mark, "rooted"}, {name_mark, "name"}};

std::string hexadecimal(std::uint32_t number, std::size_t digits)
{
    std::string text;
    for (; number != 0 || text.size() < digits; number /= 16)
        text.insert(text.begin(), "0123456789ABCDEF"[number % 16]);
    return text;
}

std::string unit_text(char16_t unit)
{
    for (mark const &known : marks) {
        if (known.unit == unit)
            return std::string("%(") + known.name + ')';
    }
    bool const is_plain = unit >= 0x20 && unit < 0x7F && unit != u'%' && unit != u'"';
    return is_plain ? std::string(1, static_cast<char>(unit)) : '%' + hexadecimal(unit, 4);
}

bool is_alphanumeric(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'0' && unit <= u'9');
}

[[noreturn]] void refuse(std::string_view what)
{
    throw std::invalid_argument("no step: " + std::string(what));
}

/// Reads a line from its beginning.
class reader
{
public:
    explicit reader(std::string_view line) : rest_(line) {}

    bool at_end() const { return rest_.empty(); }

    std::string_view take_until(char end)
    {
        std::size_t const length = std::min(rest_.find(end), rest_.size());
        std::string_view const taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    void expect(std::string_view text)
    {
        if (!rest_.starts_with(text))
            refuse(rest_);
        rest_.remove_prefix(text.size());
    }

    bool skip(std::string_view text)
    {
        if (!rest_.starts_with(text))
            return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    char take()
    {
        if (rest_.empty())
            refuse("it ends early");
        char const first = rest_.front();
        rest_.remove_prefix(1);
        return first;
    }

    std::uint32_t take_number(std::size_t digits, int base)
    {
        char const *const begin = rest_.data();
        std::uint32_t number = 0;
        auto const [end, error] =
            std::from_chars(begin, begin + std::min(digits, rest_.size()), number, base);
        if (error != std::errc())
            refuse(rest_);
        rest_.remove_prefix(static_cast<std::size_t>(end - begin));
        return number;
    }

private:
    std::string_view rest_;
};

/// What stands behind `%(`.
std::u16string read_named(reader &line)
{
    for (mark const &known : marks) {
        if (line.skip(known.name + std::string(")")))
            return std::u16string(1, known.unit);
    }
    char16_t const unit = static_cast<unsigned char>(line.take());
    line.expect("*");
    std::size_t const count = line.take_number(5, 10);
    line.expect(")");
    return std::u16string(count, unit);
}

std::u16string read_quoted(reader &line)
{
    std::u16string text;
    line.expect("\"");
    while (!line.skip("\"")) {
        if (line.skip("%("))
            text += read_named(line);
        else if (line.skip("%"))
            text += static_cast<char16_t>(line.take_number(4, 16));
        else
            text += static_cast<unsigned char>(line.take());
    }
    return text;
}

signature const &signature_named(std::string_view name)
{
    for (signature const &known : signatures()) {
        if (known.name == name)
            return known;
    }
    refuse(name);
}

} // namespace

std::vector<signature> const &signatures()
{
    static std::vector<signature> const all = {
        {function::create_directory, "CreateDirectoryW", 1, 0, false},
        {function::remove_directory, "RemoveDirectoryW", 1, 0, false},
        {function::get_attributes, "GetFileAttributesW", 1, 0, false},
        {function::get_full_path, "GetFullPathNameW", 1, 0, false},
        {function::get_current_directory, "GetCurrentDirectoryW", 0, 0, false},
        {function::set_current_directory, "SetCurrentDirectoryW", 1, 0, false},
        {function::get_variable, "GetEnvironmentVariableW", 1, 0, false},
        {function::set_variable, "SetEnvironmentVariableW", 2, 1, false},
        {function::write_file, "CreateFileW+WriteFile", 2, 2, true},
        {function::read_file, "CreateFileW+ReadFile", 1, 0, true},
        {function::open_handle, "CreateFileW", 1, 5, true},
        {function::close_handle, "CloseHandle", 0, 1, true},
        {function::delete_file, "DeleteFileW", 1, 0, true},
        {function::move_file, "MoveFileExW", 2, 1, true},
        {function::copy_file, "CopyFileW", 2, 1, true},
        {function::create_hard_link, "CreateHardLinkW", 2, 0, true},
        {function::set_attributes, "SetFileAttributesW", 1, 1, true},
        {function::get_attributes_ex, "GetFileAttributesExW", 1, 0, true},
        {function::enumerate, "FindFirstFileExW", 1, 0, true},
    };
    return all;
}

signature const &signature_of(function what)
{
    auto const &all = signatures();
    return *std::find_if(all.begin(), all.end(),
                         [what](signature const &known) { return known.what == what; });
}

std::vector<function> all_functions()
{
    std::vector<function> all;
    for (signature const &known : signatures())
        all.push_back(known.what);
    return all;
}

std::string quoted(std::u16string_view text)
{
    std::string line = "\"";
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = std::min(text.find_first_not_of(text[begin], begin), text.size());
        std::size_t const count = end - begin;
        if (count >= shortest_run && is_alphanumeric(text[begin])) {
            line += "%(" + unit_text(text[begin]) + '*' + std::to_string(count) + ')';
        } else {
            for (std::size_t index = begin; index < end; ++index)
                line += unit_text(text[index]);
        }
        begin = end;
    }
    return line + '"';
}

std::string to_line(step const &one)
{
    std::string line = signature_of(one.what).name;
    for (std::u16string const &text : one.texts)
        line += ' ' + quoted(text);
    for (std::uint32_t const number : one.numbers)
        line += " 0x" + hexadecimal(number, 1);
    return line;
}

step from_line(std::string_view text)
{
    reader line(text);
    signature const &known = signature_named(line.take_until(' '));
    step one{known.what, {}, {}};
    for (std::size_t index = 0; index < known.texts; ++index) {
        line.expect(" ");
        one.texts.push_back(read_quoted(line));
    }
    for (std::size_t index = 0; index < known.numbers; ++index) {
        line.expect(" 0x");
        one.numbers.push_back(line.take_number(8, 16));
    }
    if (!line.at_end())
        refuse(text);
    return one;
}

} // namespace differential
