// SPDX-License-Identifier: MIT
//
// json-c.

#include <json-c/json.h>

#include <stdexcept>

#include "peers/peer.h"

namespace orvid_bench {

namespace {

void summarize(json_object* value, Summary& summary);

void summarizeMembers(json_object* object, Summary& summary) {
    ++summary.objects;
    const json_object_iterator end = json_object_iter_end(object);
    for (json_object_iterator i = json_object_iter_begin(object);
         json_object_iter_equal(&i, &end) == 0; json_object_iter_next(&i)) {
        summary.addKey(std::string(json_object_iter_peek_name(&i)).size());
        summarize(json_object_iter_peek_value(&i), summary);
    }
}

void summarizeItems(json_object* array, Summary& summary) {
    ++summary.arrays;
    for (std::size_t i = 0; i < json_object_array_length(array); ++i) {
        summarize(json_object_array_get_idx(array, i), summary);
    }
}

void summarize(json_object* value, Summary& summary) {
    switch (json_object_get_type(value)) {
        case json_type_object:
            return summarizeMembers(value, summary);
        case json_type_array:
            return summarizeItems(value, summary);
        case json_type_string:
            return summary.addString(static_cast<std::size_t>(json_object_get_string_len(value)));
        case json_type_int:
        case json_type_double:
            return summary.addNumber(json_object_get_double(value));
        case json_type_boolean:
            return summary.addBoolean(json_object_get_boolean(value) != 0);
        default:
            ++summary.nulls;
    }
}

class JsonCTree : public Tree {
public:
    explicit JsonCTree(json_object* value) : m_root(value) {}
    ~JsonCTree() override { json_object_put(m_root); }

    Summary summary() const override {
        Summary result;
        summarize(m_root, result);
        return result;
    }
    std::string text() const override { return json_object_to_json_string_ext(m_root, k_layout); }
    std::size_t write() const override {
        std::size_t length = 0;
        json_object_to_json_string_length(m_root, k_layout, &length);
        return length;
    }
    std::unique_ptr<Tree> copy() const override {
        json_object* result = nullptr;
        if (json_object_deep_copy(m_root, &result, nullptr) != 0) {
            throw std::runtime_error("json-c: no copy");
        }
        return std::make_unique<JsonCTree>(result);
    }
    bool equals(const Tree& other) const override {
        return json_object_equal(m_root, static_cast<const JsonCTree&>(other).m_root) != 0;
    }
    void edit() override {
        json_object_object_add(m_root, "edited", json_object_new_int(1));
        json_object_object_add(m_root, "editor", json_object_new_string("bench"));
    }
    const void* lookUp(const PathTexts& path) const override {
        json_object* found = nullptr;
        json_pointer_get(m_root, path.pointer.c_str(), &found);
        return found;
    }
    std::string scalar(const PathTexts& path) const override {
        json_object* found = nullptr;
        json_pointer_get(m_root, path.pointer.c_str(), &found);
        return json_object_get_string(found);
    }

private:
    static constexpr int k_layout = JSON_C_TO_STRING_PRETTY | JSON_C_TO_STRING_NOSLASHESCAPE;

    json_object* m_root;
};

std::unique_ptr<Tree> read(const std::string& text) {
    json_tokener* const tokener = json_tokener_new_ex(1000);
    json_object* const root =
        json_tokener_parse_ex(tokener, text.data(), static_cast<int>(text.size()));
    const json_tokener_error error = json_tokener_get_error(tokener);
    json_tokener_free(tokener);
    if (error != json_tokener_success) {
        throw std::runtime_error(json_tokener_error_desc(error));
    }
    return std::make_unique<JsonCTree>(root);
}

}  // namespace

Peer jsonC() { return {"json-c", read, 0, 0, true}; }

}  // namespace orvid_bench
