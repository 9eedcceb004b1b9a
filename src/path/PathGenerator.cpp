// SPDX-License-Identifier: MIT
//
// Path text, written step by step.

#include <ko/Orvid/PathGenerator.h>

#include <ostream>

#include "core/EnumNames.h"
#include "path/PathText.h"

namespace ko::Orvid {

PathGenerator::PathGenerator(std::ostream& out) : m_out(&out), m_state(esInit) {}

void PathGenerator::genObjectProperty(const StringRef<char>& key) {
    std::string step;
    if (m_state != esInit) {
        step = ".";
    }
    appendEscaped(step, {key.data(), key.length()});
    m_out->write(step.data(), static_cast<std::streamsize>(step.length()));
    m_state = esObject;
}

void PathGenerator::genObjectProperty(const std::string& key) {
    genObjectProperty(StringRef<char>(key));
}

void PathGenerator::genListItem(unsigned int index) {
    m_out->put('[');
    if (index == k_noIndex) {
        m_out->put('*');
    } else {
        *m_out << index;
    }
    m_out->put(']');
    m_state = esArray;
}

namespace {

constexpr NamedEnum k_names[] = {ORVID_ENUM_NAME("esInit"), ORVID_ENUM_NAME("esObject"),
                                 ORVID_ENUM_NAME("esArray"), ORVID_ENUM_NAME("esError")};

template<class Stream>
Stream& print(Stream& out, PathGenerator::EState state) {
    return printName(out, nameAt(k_names, state), std::ios_base::failbit);
}

}  // namespace

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, ko::Orvid::PathGenerator::EState state) {
    return ko::Orvid::print(out, state);
}

std::wostream& operator<<(std::wostream& out, ko::Orvid::PathGenerator::EState state) {
    return ko::Orvid::print(out, state);
}
