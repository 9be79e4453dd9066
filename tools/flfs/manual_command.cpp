#include "flfs/commands.hpp"

#include "flfs/command.hpp"
#include "flfs/description.hpp"
#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

#include <ostream>
#include <sstream>

// The help of all commands in one text.

namespace flfs {

namespace {

/// "[PATH...]".
std::string shown_word(described_option const &word)
{
    std::string const name = word.names.front() + (word.is_repeatable ? "..." : "");
    return word.is_required ? name : '[' + name + ']';
}

/// "flfs ls [OPTIONS] [PATH...]".
std::string usage_of(described_command const &one)
{
    std::string usage = "flfs " + one.name + " [OPTIONS]";
    for (described_option const &option : one.options)
        if (option.is_word)
            usage += ' ' + shown_word(option);
    return usage;
}

/// "-r, --recursive" or "--base DIRECTORY".
std::string shown_names(described_option const &option)
{
    return joined(option.names, ", ") + (option.value.empty() ? "" : ' ' + option.value);
}

/// Writes for `man`: a backslash is told apart from its own, and no line of ours begins as one of
/// its requests.
class roff
{
public:
    explicit roff(std::ostream &out) : out_(out) {}

    static std::string plain(std::string_view text)
    {
        std::string escaped;
        for (char const one : text)
            escaped += one == '\\' ? "\\e" : (one == '-' ? "\\-" : std::string(1, one));
        return escaped;
    }

    void title(std::string_view name, std::string_view what)
    {
        out_ << R"(.TH FLFS 1 "" ")" << plain(name) << "\"\n.SH NAME\n"
             << plain(name) << " \\- " << plain(what) << '\n';
    }
    void section(std::string_view name) { out_ << ".SH \"" << plain(name) << "\"\n"; }
    void item(std::string_view name) { out_ << ".SS \"" << plain(name) << "\"\n"; }
    void text(std::string_view paragraph)
    {
        out_ << ".nf\n";
        std::istringstream lines{std::string(paragraph)};
        for (std::string line; std::getline(lines, line);)
            out_ << (line.starts_with('.') || line.starts_with('\'') ? "\\&" : "") << plain(line)
                 << '\n';
        out_ << ".fi\n";
    }
    void option(std::string_view names, std::string_view description)
    {
        out_ << ".TP\n\\fB" << plain(names) << "\\fR\n" << plain(description) << '\n';
    }

private:
    std::ostream &out_;
};

class markdown
{
public:
    explicit markdown(std::ostream &out) : out_(out) {}

    void title(std::string_view name, std::string_view what)
    {
        out_ << "# " << name << "\n\n" << what << '\n';
    }
    void section(std::string_view name) { out_ << "\n## " << name << '\n'; }
    void item(std::string_view name) { out_ << "\n### `" << name << "`\n"; }
    void text(std::string_view lines) { out_ << "\n```text\n" << lines << "\n```\n"; }
    void option(std::string_view names, std::string_view description)
    {
        out_ << "\n- `" << names << "`: " << description << '\n';
    }

private:
    std::ostream &out_;
};

template <typename Form>
void print(Form form, CLI::App const &app)
{
    form.title("flfs", "Windows pathnames and files, exactly as fl::filesystem sees them");
    std::string group;
    for (described_command const &one : commands_of_program(app)) {
        if (one.group != group)
            form.section(group = one.group);
        form.item(usage_of(one));
        form.text(one.description + (one.description.back() == '.' ? "\n\n" : ".\n\n") +
                  one.footer);
        for (described_option const &option : one.options)
            form.option(shown_names(option), option.description);
    }
    form.section("Examples and exit codes");
    form.text(footer_of_program(app));
}

} // namespace

void add_manual_command(CLI::App &app, session &session)
{
    command manual(app, session, "manual", "Print the help of all commands as one text",
                   "  man       the source of a manual page: flfs manual --as man | man -l -\n"
                   "  markdown  the default");
    option const form = manual.kind("Form of the text: man or markdown", {"man", "markdown"});
    manual.anywhere([&app, &session, form] {
        if (form.word() == "man")
            print(roff(session.out), app);
        else
            print(markdown(session.out), app);
    });
}

} // namespace flfs
