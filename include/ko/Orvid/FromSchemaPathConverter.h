// SPDX-License-Identifier: MIT
//
// FromSchemaPathConverter, the path listener that turns schema steps back into data steps.

#pragma once

#include <ko/Orvid/PathGenerator.h>
#include <ko/Orvid/PathParser.h>

#include <string>

namespace ko::Orvid {

/// Writes the data path of the schema steps that it receives, with `[*]` for `items`. Throws
/// ParseException for steps that are no schema path; one that ends early is converted as far as it
/// goes. A step costs the length of its key.
class KO_API FromSchemaPathConverter : public PathParserListener {
public:
    /// Writes through `generator`, which it does not own.
    explicit FromSchemaPathConverter(PathGenerator& generator);
    ~FromSchemaPathConverter() override;

    bool cbObjectProperty(const std::string& key) override;
    bool cbArrayItem(unsigned int index) override;

private:
    /// What has been read last, which says what may follow.
    enum EState : int {
        esNothing,     ///< `meta` must follow
        esMeta,        ///< `schema` must follow
        esSchema,      ///< `properties` or `items` must follow
        esStep,        ///< a member's name or `items`: the same must follow
        esProperties,  ///< a member's name must follow
    };

    void acceptWord(const std::string& key, const std::string& word, EState following);
    void acceptSchemaStep(const std::string& key);

    PathGenerator* m_generator;
    int m_state;
};

}  // namespace ko::Orvid
