#ifndef FL_SIMULATION_SIMULATED_MACHINE_HPP
#define FL_SIMULATION_SIMULATED_MACHINE_HPP
// The machine as our own tests hold it, who ask one thing after the other of all its parts.

#include <fl/simulation/machine.hpp>

namespace fl::simulation {

class simulated_machine : private machine,
                          public building,
                          public looking,
                          public breaking,
                          public reading
{
public:
    simulated_machine() : building(build()), looking(look()), breaking(faults()), reading(calls())
    {
    }
};

} // namespace fl::simulation

namespace simulation = fl::simulation;

#endif
