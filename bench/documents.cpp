// SPDX-License-Identifier: MIT
//
// The generators. They draw from std::mt19937, whose numbers the standard fixes, and not from the
// standard's distributions, whose numbers it does not.

#include "documents.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace orvid_bench {

namespace {

class Random {
public:
    std::size_t below(std::size_t limit) { return m_engine() % limit; }
    std::string digits(std::size_t count) {
        std::string result(1, static_cast<char>('1' + below(9)));
        while (result.size() < count) {
            result += static_cast<char>('0' + below(10));
        }
        return result;
    }
    const char* boolean() { return below(4) == 0 ? "true" : "false"; }
    std::string words(std::size_t count) {
        static const char* const k_words[] = {"the",
                                              "morning",
                                              "rain",
                                              "na\u00efve",
                                              "\u4eca\u65e5\u306f",
                                              "caf\u00e9",
                                              "\u2603",
                                              "train",
                                              "\U0001F600",
                                              "\u0434\u043e\u043c",
                                              "\\\"quoted\\\"",
                                              "\u96fb\u8eca",
                                              "at",
                                              "http:\\/\\/example.org\\/x",
                                              "#tag",
                                              "@someone"};
        std::string result;
        for (std::size_t i = 0; i < count; ++i) {
            result += (i == 0 ? "" : " ") + std::string(k_words[below(std::size(k_words))]);
        }
        return result;
    }

private:
    std::mt19937 m_engine{20090101};
};

std::string quoted(const std::string& text) { return '"' + text + '"'; }

/// `count` texts of `part`, separated by commas.
template<class Part>
std::string list(std::size_t count, const Part& part) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += (i == 0 ? "" : ",") + part(i);
    }
    return result;
}

std::string user(Random& random) {
    return R"({"id":)" + random.digits(9) + R"(,"name":)" + quoted(random.words(2)) +
           R"(,"screen_name":"user_)" + random.digits(6) + R"(","description":)" +
           quoted(random.words(12)) + R"(,"followers_count":)" + random.digits(4) +
           R"(,"verified":)" + random.boolean() +
           R"(,"lang":"ja","url":null,"profile_image_url":"http:\/\/example.org\/images\/)" +
           random.digits(18) + R"(_normal.jpeg"})";
}

std::string tweet(Random& random) {
    const std::string id = random.digits(18);
    return R"({"created_at":"Sun Aug 31 00:29:15 +0000 2014","id":)" + id + R"(,"id_str":")" + id +
           R"(","text":)" + quoted(random.words(18)) +
           R"(,"truncated":false,"in_reply_to_user_id":null,"user":)" + user(random) +
           R"(,"geo":null,"retweet_count":)" + random.digits(2) + R"(,"entities":{"hashtags":[)" +
           list(random.below(3), [&](std::size_t) { return quoted(random.words(1)); }) +
           R"(],"indices":[0,)" + random.digits(2) + R"(]},"favorited":)" + random.boolean() + "}";
}

std::string area(Random& random) {
    return R"({"areaId":)" + random.digits(9) + R"(,"blockIds":[],"seats":)" + random.digits(3) +
           "}";
}

std::string article(Random& random) {
    const auto areas = [&](std::size_t) { return area(random); };
    return R"({"id":)" + random.digits(9) + R"(,"name":)" + quoted(random.words(3)) +
           R"(,"logo":null,"start":)" + random.digits(13) + R"(,"prices":[{"amount":)" +
           random.digits(5) + R"(,"audience":)" + random.digits(9) +
           R"(}],"categories":[{"areas":[)" + list(3 + random.below(5), areas) +
           R"(],"categoryId":)" + random.digits(9) + R"(}],"topics":[)" +
           list(4, [&](std::size_t) { return random.digits(9); }) + "]}";
}

std::string degrees(Random& random) {
    return (random.below(2) == 0 ? "-" : "") + random.digits(2) + "." + random.digits(15);
}

std::string section(std::size_t number) {
    return R"("section)" + std::to_string(number) +
           R"(":{"enabled":true,"timeout":2.50,"owner":"team","servers":[{"host":"alpha.example"},)"
           R"({"host":"beta.example","weight":3}],"tags":["a","b"]})";
}

std::string sectionSchema(std::size_t number) {
    return R"("section)" + std::to_string(number) +
           R"(":{"properties":{"enabled":{"default":false},"timeout":{"default":1.5},"servers":{"items":)"
           R"({"properties":{"host":{"default":"localhost"},"port":{"default":8080}}}}}})";
}

std::string fileText(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + name);
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

std::string tweets(std::size_t count) {
    Random random;
    return R"({"statuses":[)" + list(count, [&](std::size_t) { return tweet(random); }) +
           R"(],"count":)" + std::to_string(count) + "}";
}

std::string catalogue(std::size_t count) {
    Random random;
    const auto member = [&](std::size_t i) {
        return quoted(std::to_string(138586341 + 7 * i)) + ":" + article(random);
    };
    return R"({"articles":{)" + list(count, member) + "}}";
}

std::string coordinates(std::size_t count) {
    Random random;
    const auto point = [&](std::size_t) {
        const std::string x = degrees(random);
        return "[" + x + "," + degrees(random) + "]";
    };
    return R"({"type":"Polygon","coordinates":[[)" + list(count, point) + "]]}";
}

std::string settings(std::size_t sections) {
    return R"({"meta":{"schema":{"properties":{)" + list(sections, sectionSchema) + "}}}," +
           list(sections, section) + "}";
}

std::string wideKey(std::size_t i) {
    char text[16];
    // An odd factor makes the low 32 bits a permutation: no two keys are the same.
    std::snprintf(text, sizeof text, "key%08x", static_cast<std::uint32_t>(i) * 2654435761U);
    return text;
}

std::string wideObject(std::size_t members) {
    return "{" +
           list(members,
                [](std::size_t i) { return quoted(wideKey(i)) + ":" + std::to_string(i); }) +
           "}";
}

std::string longArray(std::size_t items) {
    return "[" + list(items, [](std::size_t i) { return std::to_string(i); }) + "]";
}

std::string deepObject(std::size_t levels) {
    std::string result;
    for (std::size_t i = 0; i < levels; ++i) {
        result += R"({"level":)";
    }
    return result + "1" + std::string(levels, '}');
}

PathTexts deepPath(std::size_t levels) {
    PathTexts result;
    for (std::size_t i = 0; i < levels; ++i) {
        result.dotted += i == 0 ? "level" : ".level";
        result.pointer += "/level";
    }
    return result;
}

std::vector<Document> generatedDocuments(std::size_t share) {
    return {{"tweets", tweets(1000 / share)},
            {"catalogue", catalogue(3000 / share)},
            {"coordinates", coordinates(50000 / share)},
            {"settings", settings(20)},
            {"wide object", wideObject(100000 / share), 100000 / share},
            {"long array", longArray(200000 / share)}};
}

std::vector<Document> corpusDocuments() {
    std::vector<Document> result;
    if (const char* folder = std::getenv("ORVID_CORPUS"); folder != nullptr && *folder != '\0') {
        for (const char* name : {"twitter", "citm_catalog", "canada"}) {
            result.push_back({name, fileText(std::string(folder) + "/" + name + ".json")});
        }
    }
    return result;
}

Document documentNamed(const std::string& name) {
    for (const auto& documents : {corpusDocuments(), generatedDocuments()}) {
        for (const Document& document : documents) {
            if (document.name == name) {
                return document;
            }
        }
    }
    throw std::runtime_error("there is no document " + name);
}

}  // namespace orvid_bench
