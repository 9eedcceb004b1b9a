// SPDX-License-Identifier: MIT
//
// Data steps to schema steps.

#include <ko/Orvid/ToSchemaPathConverter.h>

#include <ko/Orvid/Path.h>

namespace ko::Orvid {

ToSchemaPathConverter::ToSchemaPathConverter(PathGenerator& generator) : m_generator(&generator) {
    m_generator->genObjectProperty(Path::k_meta);
    m_generator->genObjectProperty(Path::k_schema);
}

ToSchemaPathConverter::~ToSchemaPathConverter() = default;

bool ToSchemaPathConverter::cbObjectProperty(const std::string& key) {
    m_generator->genObjectProperty(Path::k_metaObjectProperty);
    m_generator->genObjectProperty(key);
    return true;
}

bool ToSchemaPathConverter::cbArrayItem(unsigned int /*index*/) {
    m_generator->genObjectProperty(Path::k_metaArrayItem);
    return true;
}

}  // namespace ko::Orvid
