#pragma once
#define __ISA_AVAILABLE_SSE42 2
#define __ISA_AVAILABLE_AVX2 5
