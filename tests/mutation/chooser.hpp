#ifndef FL_TESTS_MUTATION_CHOOSER_HPP
#define FL_TESTS_MUTATION_CHOOSER_HPP
// What scripts/mutate writes into copies of the sources: every changed place asks here whether it
// is the one that is chosen. Included ahead of everything else, so it includes nothing itself.

extern "C" {
extern int fl_chosen_mutant;               ///< from FL_MUTANT; none where that isn't set
extern unsigned char fl_reached_mutants[]; ///< 1 behind the first question
}

/// Whether the change `number` is in force. Never where the compiler evaluates.
constexpr bool fl_mutant(int number) noexcept
{
    if (__builtin_is_constant_evaluated())
        return false;
    fl_reached_mutants[number] = 1;
    return number == fl_chosen_mutant;
}

/// The next value of the same type: of numbers, units of text, enumerators and flags.
template <typename Value>
constexpr Value fl_next(Value value) noexcept
{
    return static_cast<Value>(static_cast<unsigned long long>(value) + 1);
}

/// `value`, but one that no label has in place of `label`.
template <typename Value, typename Label>
constexpr Value fl_unlike(Value value, Label label) noexcept
{
    return value == static_cast<Value>(label) ? static_cast<Value>(-77) : value;
}

#endif
