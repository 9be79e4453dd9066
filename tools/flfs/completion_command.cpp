#include "flfs/commands.hpp"

#include "flfs/command.hpp"
#include "flfs/description.hpp"
#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

#include <ostream>

// What shells need to know to complete a line that begins with flfs.

namespace flfs {

namespace {

std::string long_names_of(described_command const &one)
{
    std::vector<std::string> names;
    for (described_option const &option : one.options)
        if (!option.is_word)
            names.push_back(option.names.back());
    return joined(names, " ");
}

std::string names_of(std::vector<described_command> const &commands, char const *separator)
{
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (described_command const &one : commands)
        names.push_back(one.name);
    return joined(names, separator);
}

void print_for_bash(std::ostream &out, std::vector<described_command> const &commands)
{
    out << "# for bash: flfs completion bash > ~/.local/share/bash-completion/completions/flfs\n"
           "_flfs()\n"
           "{\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} options=--help\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W '"
        << names_of(commands, " ")
        << " --help --version' -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    case $word in\n"
           "    -*) ;;\n"
           "    *) return ;; # a pathname, which bash completes itself\n"
           "    esac\n"
           "    case ${COMP_WORDS[1]} in\n";
    for (described_command const &one : commands)
        out << "    " << one.name << ") options='" << long_names_of(one) << "' ;;\n";
    out << "    esac\n"
           "    COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
           "}\n"
           "complete -o default -F _flfs flfs flfs.exe\n";
}

void print_for_powershell(std::ostream &out, std::vector<described_command> const &commands)
{
    out << "# for PowerShell: flfs completion powershell | Out-String | Invoke-Expression\n"
           "Register-ArgumentCompleter -Native -CommandName flfs, flfs.exe -ScriptBlock {\n"
           "    param($word, $line, $cursor)\n"
           "    $options = @{\n";
    for (described_command const &one : commands)
        out << "        '" << one.name << "' = '" << long_names_of(one) << "'\n";
    out << "    }\n"
           "    $ahead = @($line.CommandElements | Where-Object { $_.Extent.EndOffset -lt $cursor "
           "})\n"
           "    $choices = if ($ahead.Count -le 1) {\n"
           "        @($options.Keys | Sort-Object) + '--help' + '--version'\n"
           "    } elseif ($word -like '-*') {\n"
           "        \"$($options[$ahead[1].Extent.Text])\" -split ' '\n"
           "    }\n"
           "    $choices | Where-Object { $_ -like \"$word*\" } | ForEach-Object {\n"
           "        [System.Management.Automation.CompletionResult]::new($_, $_, "
           "'ParameterValue', $_)\n"
           "    }\n"
           "}\n";
}

} // namespace

void add_completion_command(CLI::App &app, session &session)
{
    command completion(app, session, "completion",
                       "Print what a shell needs to complete commands and options",
                       "  bash        flfs completion bash > "
                       "~/.local/share/bash-completion/completions/flfs\n"
                       "  PowerShell  flfs completion powershell | Out-String | "
                       "Invoke-Expression");
    option const shell = completion.word("SHELL", "bash or powershell");
    shell.raw().check(CLI::IsMember({"bash", "powershell"}), "");
    completion.anywhere([&app, &session, shell] {
        if (shell.word() == "bash")
            print_for_bash(session.out, commands_of_program(app));
        else
            print_for_powershell(session.out, commands_of_program(app));
    });
}

} // namespace flfs
