// SPDX-License-Identifier: MIT
//
// assignWhole() assigns an exception with fields of its own: all of it, or nothing where memory is
// refused, so that no exception shows the path of one error and the text of another.

#pragma once

#include <ko/Orvid/Exception.h>

#include <tuple>
#include <utility>

namespace ko::Orvid {

/// Copies the base and these fields, which are moved without throwing.
template<class Error, class... Fields>
Error& assignWhole(Error& target, const Error& other, Fields Error::*... fields) {
    std::tuple<Fields...> copies(other.*fields...);
    static_cast<Exception&>(target) = other;
    std::apply([&](Fields&... copied) { ((target.*fields = std::move(copied)), ...); }, copies);
    return target;
}

}  // namespace ko::Orvid
