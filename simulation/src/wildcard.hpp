#ifndef FL_SIMULATION_WILDCARD_HPP
#define FL_SIMULATION_WILDCARD_HPP
// Patterns of names, as an enumeration takes them.

#include <string>
#include <string_view>

namespace fl::simulation {

/// Whether `text` has any unit that stands for others.
bool has_wildcard(std::u16string_view text);

/// Whether a pattern means a name, whatever the case. The rules are older than long
/// names: `*.*` means every name, `*.` those without a full stop, and a `?` at the end
/// or before a full stop may mean nothing at all.
bool matches(std::u16string_view pattern, std::u16string_view name);

} // namespace fl::simulation

#endif
