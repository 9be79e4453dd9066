#include "differential/generator.hpp"

#include "differential/vocabulary.hpp"

#include <algorithm>
#include <utility>

namespace differential {

namespace {

/// How often a function comes, compared with the others.
std::size_t weight_of(function what)
{
    switch (what) {
    case function::get_current_directory:
    case function::get_variable:
    case function::create_hard_link:
        return 1;
    case function::set_current_directory:
    case function::set_variable:
    case function::open_handle:
    case function::close_handle:
    case function::set_attributes:
    case function::get_attributes_ex:
    case function::copy_file:
        return 2;
    case function::create_directory:
    case function::write_file:
        return 6;
    default:
        return 4;
    }
}

constexpr std::uint32_t dispositions[] = {1, 2, 3, 4, 5};
constexpr std::uint32_t attributes[] = {0x80, 0x20, 0x01, 0x02, 0x04, 0x03, 0x21, 0x00};
constexpr std::uint32_t accesses[] = {0x80000000, 0x40000000, 0xC0000000, 0x00010000,
                                      0x00000080, 0x00000001, 0x80010000};
constexpr std::uint32_t share_modes[] = {0, 1, 2, 3, 4, 5, 7, 7, 7};
/// None, for directories, and deleting on close with either.
constexpr std::uint32_t open_flags[] = {0x80, 0x02000000, 0x02000000, 0x04000080, 0x06000000};
/// Replacing and copying. Nothing is put off until the system starts again.
constexpr std::uint32_t move_flags[] = {0, 1, 1, 2, 3, 8};

std::vector<std::uint32_t> numbers_for(function what, dice &dice)
{
    switch (what) {
    case function::set_variable:
        return {dice.chance(80) ? 1U : 0U};
    case function::write_file:
        return {dice.pick(dispositions), dice.pick(attributes)};
    case function::open_handle:
        return {static_cast<std::uint32_t>(dice.roll(3)), dice.pick(accesses),
                dice.pick(share_modes), dice.chance(80) ? 3U : dice.pick(dispositions),
                dice.pick(open_flags)};
    case function::close_handle:
        return {static_cast<std::uint32_t>(dice.roll(3))};
    case function::move_file:
        return {dice.pick(move_flags)};
    case function::copy_file:
        return {dice.chance(50) ? 1U : 0U};
    case function::set_attributes:
        return {dice.pick(attributes)};
    default:
        return {};
    }
}

/// The next text of a step that has `texts` already.
std::u16string text_for(function what, std::vector<std::u16string> const &texts, dice &dice)
{
    switch (what) {
    case function::get_full_path:
        return dice.chance(50) ? random_shape(dice) : random_text_to_treat(dice);
    case function::set_current_directory:
        return random_directory(dice);
    case function::get_variable:
        return random_variable(dice);
    case function::set_variable:
        return texts.empty() ? random_variable(dice) : random_value(dice, texts[0]);
    case function::enumerate:
        return random_pattern(dice);
    case function::write_file:
        if (texts.size() == 1)
            return std::u16string(dice.roll(4), u'x');
        break;
    default:
        break;
    }
    return random_pathname(dice);
}

} // namespace

generator::generator(std::uint64_t seed, std::vector<function> functions)
    : dice_(seed), functions_(std::move(functions))
{
}

function generator::next_function()
{
    std::size_t sum = 0;
    for (function const what : functions_)
        sum += weight_of(what);
    std::size_t rolled = dice_.roll(sum);
    for (function const what : functions_) {
        if (rolled < weight_of(what))
            return what;
        rolled -= weight_of(what);
    }
    return functions_.back();
}

step generator::next_step()
{
    step one{next_function(), {}, {}};
    while (one.texts.size() < signature_of(one.what).texts)
        one.texts.push_back(text_for(one.what, one.texts, dice_));
    one.numbers = numbers_for(one.what, dice_);
    return one;
}

sequence generator::next(std::size_t length)
{
    sequence steps;
    while (steps.size() < length)
        steps.push_back(next_step());
    return steps;
}

} // namespace differential
