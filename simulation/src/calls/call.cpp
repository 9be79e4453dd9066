#include "calls/call.hpp"

#include "handles.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

thread_local int calls_in_progress = 0;
thread_local std::size_t calls_begun = 0;

} // namespace

bool is_in_call() noexcept
{
    return calls_in_progress > 0;
}

std::size_t calls_made() noexcept
{
    return calls_begun;
}

call_in_progress::call_in_progress() noexcept
{
    ++calls_begun;
    ++calls_in_progress;
}

call_in_progress::~call_in_progress()
{
    --calls_in_progress;
}

std::u16string opened_text(machine_state const &machine, HANDLE handle)
{
    try {
        return machine.open->text_of(handle);
    } catch (failure const &) {
        return {};
    }
}

void write_journal(machine_state &machine, call const &made, std::u16string text,
                   std::uint64_t answer, DWORD code)
{
    if (!machine.keeps_journal)
        return;
    journal_entry line;
    line.function = made.function;
    line.text = std::move(text);
    line.second_text = from_wide(made.second_text);
    line.flags = made.flags;
    line.access = made.access;
    line.share = made.share;
    line.disposition = made.disposition;
    line.answer = answer;
    line.room = made.room;
    line.last_error = code;
    machine.journal.push_back(std::move(line));
}

DWORD hand_over(std::u16string_view text, DWORD room, LPWSTR buffer)
{
    DWORD const length = static_cast<DWORD>(text.size());
    if (buffer == nullptr || length >= room)
        return length + 1;
    wchar_t *const end = std::copy(text.begin(), text.end(), buffer);
    *end = L'\0';
    std::fill(end + 1, buffer + room, buffer_junk);
    return length;
}

} // namespace fl::simulation
