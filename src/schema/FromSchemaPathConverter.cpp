// SPDX-License-Identifier: MIT
//
// Schema steps to data steps.

#include <ko/Orvid/FromSchemaPathConverter.h>

#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Path.h>

namespace ko::Orvid {

namespace {

[[noreturn]] void fail(const char* message, ParseErrorCode code) {
    throw ParseException(message, -1, -1, -1, -1).withCode(code);
}

}  // namespace

FromSchemaPathConverter::FromSchemaPathConverter(PathGenerator& generator)
    : m_generator(&generator), m_state(esNothing) {}

FromSchemaPathConverter::~FromSchemaPathConverter() = default;

bool FromSchemaPathConverter::cbObjectProperty(const std::string& key) {
    switch (m_state) {
        case esNothing:
            acceptWord(key, Path::k_meta, esMeta);
            break;
        case esMeta:
            acceptWord(key, Path::k_schema, esSchema);
            break;
        case esSchema:
        case esStep:
            acceptSchemaStep(key);
            break;
        case esProperties:
            m_generator->genObjectProperty(key);
            m_state = esStep;
            break;
        default:
            break;
    }
    return true;
}

bool FromSchemaPathConverter::cbArrayItem(unsigned int /*index*/) {
    fail("Schema path may not contain arrays!", ParseErrorCode::schemaPathIndex);
}

void FromSchemaPathConverter::acceptWord(const std::string& key, const std::string& word,
                                         EState following) {
    if (key != word) {
        fail("Schema path must begin with meta.schema!", ParseErrorCode::schemaPathPrefix);
    }
    m_state = following;
}

void FromSchemaPathConverter::acceptSchemaStep(const std::string& key) {
    if (key == Path::k_metaObjectProperty) {
        m_state = esProperties;
    } else if (key == Path::k_metaArrayItem) {
        m_generator->genListItem(k_noIndex);
        m_state = esStep;
    } else {
        fail("\"properties\" or \"items\" expeced!", ParseErrorCode::schemaPathKeyword);
    }
}

}  // namespace ko::Orvid
