// Interfaces carry their identifiers, as __uuidof wants them.
#pragma once
#include_next <rpcndr.h>
#undef MIDL_INTERFACE
#define MIDL_INTERFACE(x) struct __declspec(uuid(x))
