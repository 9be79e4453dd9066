#ifndef FL_FLFS_INSPECTION_JSON_HPP
#define FL_FLFS_INSPECTION_JSON_HPP
// An inspection for programs. The keys stay: scripts depend on them.

#include "flfs/inspection.hpp"

#include <nlohmann/json.hpp>

namespace flfs {

/// Every key is always there; where there is no answer, its value is null. An empty
/// text is "". JSON can't hold an unpaired surrogate, so its escape stands for it,
/// and `length` and `native_length` tell how many UTF-16 units there really are.
nlohmann::ordered_json to_json(inspection const &one);

} // namespace flfs

#endif
