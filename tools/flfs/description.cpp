#include "flfs/description.hpp"

#include <CLI/CLI.hpp>

namespace flfs {

namespace {

CLI::App const &program_of(CLI::App const &any)
{
    return any.get_parent() == nullptr ? any : *any.get_parent();
}

described_option described(CLI::Option const &one)
{
    std::string const &text = one.get_option_text();
    bool const is_word = one.get_positional();
    described_option told{{},      is_word || text == " " ? "" : text, one.get_description(),
                          is_word, one.get_expected_max() > 1,         one.get_required()};
    if (is_word)
        told.names.push_back(one.get_name(true));
    for (std::string const &name : one.get_snames())
        told.names.push_back("-" + name);
    for (std::string const &name : one.get_lnames())
        told.names.push_back("--" + name);
    return told;
}

} // namespace

std::vector<described_command> commands_of_program(CLI::App const &any)
{
    std::vector<described_command> all;
    for (CLI::App const *const one : program_of(any).get_subcommands({})) {
        described_command told{
            one->get_name(), one->get_group(), one->get_description(), one->get_footer(), {}};
        for (CLI::Option const *const option : one->get_options())
            told.options.push_back(described(*option));
        all.push_back(std::move(told));
    }
    return all;
}

std::string footer_of_program(CLI::App const &any)
{
    return program_of(any).get_footer();
}

} // namespace flfs
