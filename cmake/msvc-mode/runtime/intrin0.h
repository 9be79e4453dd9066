#pragma once
#include <intrin.h>
