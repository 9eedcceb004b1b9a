// SPDX-License-Identifier: MIT
//
// The mark of a parameter, or of a member function's object, that the result refers to. Compilers
// that know it warn where the result would outlive a temporary.

#pragma once

#if defined(__clang__)
#define KO_LIFETIME_BOUND [[clang::lifetimebound]]
#else
#define KO_LIFETIME_BOUND
#endif
