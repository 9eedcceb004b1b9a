// SPDX-License-Identifier: MIT
//
// ToSchemaPathConverter, the path listener that turns data steps into schema steps.

#pragma once

#include <ko/Orvid/PathGenerator.h>
#include <ko/Orvid/PathParser.h>

#include <string>

namespace ko::Orvid {

/// Writes the schema path of the steps that it receives: `meta.schema` at once, `properties` and
/// the key for an object step, `items` for an array step, whose index is dropped. A step costs the
/// length of its key.
class KO_API ToSchemaPathConverter : public PathParserListener {
public:
    /// Writes through `generator`, which it does not own.
    explicit ToSchemaPathConverter(PathGenerator& generator);
    ~ToSchemaPathConverter() override;

    bool cbObjectProperty(const std::string& key) override;
    bool cbArrayItem(unsigned int index) override;

private:
    PathGenerator* m_generator;
};

}  // namespace ko::Orvid
