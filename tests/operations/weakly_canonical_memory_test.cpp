// `weakly_canonical` where memory runs out on its walk.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/memory_for_text.hpp"

#include <new>

namespace fl::filesystem::tests {
namespace {

TEST_ON_MACHINE(WeaklyCanonicalMemory, EndsTheWalkWhereItRunsOut)
{
    machine.add_directory(u"C:\\d").add_symbolic_link(u"C:\\l", u"d", flavour::directory);
    // the whole is asked about first, then the drive and its root: then comes the link
    memory_for_text const none(machine, 4);
    EXPECT_EQ(weakly_canonical(uR"(C:\l\no)"), uR"(C:\l\no)") << "the root was reached";
    EXPECT_TRUE(none.ran_out());
}

TEST_ON_MACHINE(WeaklyCanonicalMemory, IsMissedAheadOfTheWalkAndBehindIt)
{
    for (int const nth : {1, 6}) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\d");
        memory_for_text const none(fresh, nth);
        EXPECT_THROW(weakly_canonical(uR"(C:\d\no)"), std::bad_alloc) << nth;
        EXPECT_TRUE(none.ran_out());
    }
}

} // namespace
} // namespace fl::filesystem::tests
