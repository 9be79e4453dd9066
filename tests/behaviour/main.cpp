// Prints docs/behaviour.md.

#include "behaviour/report.hpp"

#include <iostream>

int main()
{
    std::cout << behaviour::report();
    return std::cout.good() ? 0 : 1;
}
