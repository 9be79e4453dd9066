#ifndef FL_FLFS_FAILURE_JSON_HPP
#define FL_FLFS_FAILURE_JSON_HPP
// Failures and lists of texts for programs. The keys stay: scripts depend on them.

#include "flfs/failure_report.hpp"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace flfs {

/// Unpaired surrogates as their escapes.
nlohmann::ordered_json to_json(std::vector<std::u16string> const &texts);

nlohmann::ordered_json to_json(failure const &what_failed);

} // namespace flfs

#endif
