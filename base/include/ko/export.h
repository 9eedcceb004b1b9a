// SPDX-License-Identifier: MIT
//
// The export macro of the base support library and of every library built on it. All objects are
// compiled with hidden visibility; what carries KO_API is the binary interface.

#pragma once

#define KO_API __attribute__((visibility("default")))
