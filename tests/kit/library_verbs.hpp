#ifndef FL_FILESYSTEM_TESTS_KIT_LIBRARY_VERBS_HPP
#define FL_FILESYSTEM_TESTS_KIT_LIBRARY_VERBS_HPP
// Verbs of scripts beside those of the system's calls.

#include "platform/facts/script.hpp"

namespace kit {

/// `our OPERATION NAME [NAME]`: one of the library's operations, which answers what it returns,
/// `ok`, or its failure: the class, and the code if it has one, as in `SystemError(32)`.
contract::facts::verb_table library_verbs();

/// `deny NAME RIGHT`, until the script ends; `subst DRIVE FOLDER`, on Windows alone.
contract::facts::verb_table system_verbs();

} // namespace kit

#endif
