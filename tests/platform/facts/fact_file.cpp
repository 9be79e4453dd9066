#include "platform/facts/facts.hpp"

#include "platform/contract.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

namespace contract::facts {

namespace {

constexpr condition conditions[] = {
    {"up to Windows 10 1809", [] { return !frees_names_at_once(); }},
    {"since Windows 10 1903", [] { return frees_names_at_once(); }},
    {"up to Windows 10", [] { return finds_devices_anywhere(); }},
    {"since Windows 11", [] { return !finds_devices_anywhere(); }},
    {"with long pathnames", [] { return takes_long_pathnames(); }},
    {"without long pathnames", [] { return !takes_long_pathnames() && !runs_under_wine(); }},
    {"not under Wine", [] { return !runs_under_wine(); }},
};

class reader
{
public:
    explicit reader(std::string file) : file_(std::move(file)) {}

    void read(std::string const &line)
    {
        ++number_;
        std::size_t const start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line.starts_with('#'))
            return;
        if (start > 0)
            add(line.substr(start));
        else if (line.starts_with(witness_word))
            name_witness(line.substr(witness_word.size()));
        else
            begin(line);
    }

    std::vector<fact> finish()
    {
        complete();
        if (facts_.empty())
            fail("there is no fact");
        for (auto const &[name, text] : witnesses_) {
            if (!used_.contains(name))
                fail("no fact has the witness " + name);
        }
        return std::move(facts_);
    }

private:
    static constexpr std::string_view witness_word = "witness ";

    std::string place() const { return file_ + ':' + std::to_string(number_); }

    [[noreturn]] void fail(std::string const &why) const
    {
        throw std::invalid_argument(place() + ": " + why);
    }

    /// What stands ahead of a colon, and behind it.
    std::pair<std::string, std::string> halves(std::string const &text) const
    {
        std::size_t const colon = text.find(": ");
        if (colon == 0 || colon == std::string::npos || colon + 2 == text.size())
            fail("two texts with a colon and a blank between them are expected");
        return {text.substr(0, colon), text.substr(colon + 2)};
    }

    void name_witness(std::string const &text)
    {
        auto const [name, witness] = halves(text);
        if (name.find(' ') != std::string::npos)
            fail("a witness's name is one word");
        if (!witnesses_.emplace(name, witness).second)
            fail("there is a witness " + name + " already");
    }

    void begin(std::string const &script)
    {
        complete();
        fact &next = facts_.emplace_back();
        next.place = place();
        next.script = script;
    }

    /// Fails unless the last fact is whole.
    void complete() const
    {
        if (!facts_.empty() && facts_.back().witness.empty())
            fail("the fact ahead has no witness");
    }

    /// An indented line: the first has the witness.
    void add(std::string const &text)
    {
        if (facts_.empty())
            fail("there is no fact ahead");
        fact &last = facts_.back();
        auto const [name, value] = halves(text);
        if (last.witness.empty()) {
            last.witness = witness(name);
            last.says = value;
        } else if (name == "Wine 8" && !last.wine) {
            last.wine = value;
        } else if (name == "only" && last.only == nullptr) {
            last.only = &condition_named(value);
        } else {
            fail("a fact has one witness, one `Wine 8` and one `only` at the most");
        }
    }

    /// One word is a name from above; more are the witness itself.
    std::string witness(std::string const &name)
    {
        if (name.find(' ') != std::string::npos)
            return name;
        auto const known = witnesses_.find(name);
        if (known == witnesses_.end())
            fail("there is no witness " + name);
        used_.insert(name);
        return known->second;
    }

    condition const &condition_named(std::string const &text) const
    {
        auto const *const known =
            std::find_if(std::begin(conditions), std::end(conditions),
                         [&](condition const &each) { return each.text == text; });
        if (known == std::end(conditions))
            fail("no such system is known: " + text);
        return *known;
    }

    std::string file_;
    std::size_t number_ = 0; // of the line, from 1 on
    std::map<std::string, std::string> witnesses_;
    std::set<std::string> used_;
    std::vector<fact> facts_;
};

} // namespace

std::vector<fact> parse(std::string const &file, std::span<char const *const> lines)
{
    reader reading(file);
    for (char const *const line : lines)
        reading.read(line);
    return reading.finish();
}

} // namespace contract::facts
