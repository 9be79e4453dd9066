#include "faults.hpp"

#include "failure.hpp"
#include "full_path.hpp"
#include "machine_state.hpp"
#include "names.hpp"

#include <algorithm>
#include <mutex>
#include <utility>

namespace fl::simulation {

fault::fault(std::shared_ptr<fault_record> record) noexcept : record_(std::move(record)) {}

fault::fault(fault &&other) noexcept : record_(std::exchange(other.record_, nullptr)) {}

fault &fault::operator=(fault other) noexcept
{
    std::swap(record_, other.record_);
    return *this;
}

fault::~fault()
{
    if (!record_)
        return;
    // a hook that runs on another thread ends first: it may use what its test holds
    std::lock_guard const lock(machine_mutex());
    record_->is_live = false;
}

bool fault::fired() const noexcept
{
    return record_ && record_->has_fired;
}

fault faults::add(std::shared_ptr<fault_record> record)
{
    forget_dead();
    records_.push_back(record);
    return fault(std::move(record));
}

std::u16string comparable_name(std::u16string_view text, machine_state &machine)
{
    std::u16string name(text);
    environment const kept = machine.running.variables; // which `X:name` would put right
    try {
        if (!is_literal(text))
            name = full_path(text, machine);
    } catch (failure const &) {
        return name; // no pathname: comparable with its like
    }
    machine.running.variables = kept;
    if (is_literal(name) || name.starts_with(u"\\\\.\\"))
        name = name.substr(4);
    if (upcase(name).starts_with(u"UNC\\"))
        name = u"\\" + name.substr(3);
    while (name.ends_with(u'\\'))
        name.pop_back();
    return upcase(name);
}

std::optional<DWORD> faults::meet(std::string_view function,
                                  std::span<std::u16string_view const> pathnames,
                                  machine_state &machine)
{
    forget_dead();
    std::vector<std::u16string> names;
    if (knows_names()) {
        for (std::u16string_view const pathname : pathnames)
            names.push_back(comparable_name(pathname, machine));
    }
    std::optional<DWORD> code;
    for (auto const &met : count(function, names)) {
        if (met->action)
            met->action();
        else if (code)
            continue; // another one fails the call
        else
            code = met->code;
        met->has_fired = true;
    }
    return code;
}

faults::records faults::count(std::string_view function, std::vector<std::u16string> const &names)
{
    records met;
    for (auto const &record : records_) {
        bool const is_other_function = !record->function.empty() && record->function != function;
        bool const is_other_name = !record->name.empty() && std::find(names.begin(), names.end(),
                                                                      record->name) == names.end();
        if (record->hook || is_other_function || is_other_name)
            continue;
        ++record->seen; // each counts for itself, also when another fails the call
        if (record->nth == 0 || record->nth == record->seen)
            met.push_back(record);
    }
    return met;
}

std::optional<DWORD> faults::full_path_name(DWORD room, wchar_t *buffer)
{
    auto const hooked = records_; // a hook may add or remove faults
    for (auto const &record : hooked) {
        if (!record->hook || !record->is_live)
            continue;
        std::optional<DWORD> const answer = record->hook(room, buffer);
        if (!answer)
            continue;
        record->has_fired = true;
        return answer;
    }
    return std::nullopt;
}

bool faults::knows_names() const
{
    return std::any_of(records_.begin(), records_.end(),
                       [](auto const &record) { return !record->name.empty(); });
}

void faults::forget_dead()
{
    std::erase_if(records_, [](auto const &record) { return !record->is_live; });
}

} // namespace fl::simulation
