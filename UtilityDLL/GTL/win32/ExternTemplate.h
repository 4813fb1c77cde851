#pragma once

/// GCC does not export the inline members of an instance from a DLL, whatever its attributes: a host that
/// linked against them would find only those that it could inline. So each module makes its own.
#define GTL_EXTERN_TEMPLATE(...) static_assert(true)
