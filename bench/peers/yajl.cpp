// SPDX-License-Identifier: MIT
//
// YAJL 2, used directly.

#include "peers/yajl.h"

#include <yajl/yajl_gen.h>
#include <yajl/yajl_parse.h>

#include <cstdlib>
#include <stdexcept>

namespace orvid_bench {

namespace {

using Bytes = const unsigned char*;

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

void parse(const yajl_callbacks& callbacks, void* context, const std::string& text) {
    yajl_handle handle = yajl_alloc(&callbacks, nullptr, context);
    yajl_config(handle, yajl_dont_validate_strings, 1);
    yajl_config(handle, yajl_allow_comments, 1);
    yajl_status status = yajl_parse(handle, bytes(text), text.size());
    if (status == yajl_status_ok) {
        status = yajl_complete_parse(handle);
    }
    yajl_free(handle);
    if (status != yajl_status_ok) {
        throw std::runtime_error("YAJL: parse error");
    }
}

yajl_callbacks idleCallbacks() {
    yajl_callbacks table{};
    table.yajl_null = [](void*) { return 1; };
    table.yajl_boolean = [](void*, int) { return 1; };
    table.yajl_number = [](void*, const char*, std::size_t) { return 1; };
    table.yajl_string = [](void*, Bytes, std::size_t) { return 1; };
    table.yajl_start_map = [](void*) { return 1; };
    table.yajl_map_key = [](void*, Bytes, std::size_t) { return 1; };
    table.yajl_end_map = [](void*) { return 1; };
    table.yajl_start_array = [](void*) { return 1; };
    table.yajl_end_array = [](void*) { return 1; };
    return table;
}

template<class Use>
int with(void* context, const Use& use) {
    use(*static_cast<Summary*>(context));
    return 1;
}

yajl_callbacks countingCallbacks() {
    yajl_callbacks table = idleCallbacks();
    table.yajl_null = [](void* c) { return with(c, [](Summary& s) { ++s.nulls; }); };
    table.yajl_boolean = [](void* c, int value) {
        return with(c, [=](Summary& s) { s.addBoolean(value != 0); });
    };
    table.yajl_number = [](void* c, const char* text, std::size_t length) {
        return with(c, [=](Summary& s) { s.addNumber(std::stod(std::string(text, length))); });
    };
    table.yajl_string = [](void* c, Bytes, std::size_t length) {
        return with(c, [=](Summary& s) { s.addString(length); });
    };
    table.yajl_start_map = [](void* c) { return with(c, [](Summary& s) { ++s.objects; }); };
    table.yajl_map_key = [](void* c, Bytes, std::size_t length) {
        return with(c, [=](Summary& s) { s.addKey(length); });
    };
    table.yajl_start_array = [](void* c) { return with(c, [](Summary& s) { ++s.arrays; }); };
    return table;
}

}  // namespace

void passOver(const std::string& text) {
    static const yajl_callbacks callbacks = idleCallbacks();
    parse(callbacks, nullptr, text);
}

Summary summaryOfPass(const std::string& text) {
    static const yajl_callbacks callbacks = countingCallbacks();
    Summary result;
    parse(callbacks, &result, text);
    return result;
}

struct TokenList::Recorder {
    static int add(void* list, Kind kind, bool value = false) {
        static_cast<TokenList*>(list)->m_tokens.push_back({kind, value, 0, 0});
        return 1;
    }
    static int addText(void* context, Kind kind, const char* text, std::size_t length) {
        auto& list = *static_cast<TokenList*>(context);
        list.m_tokens.push_back({kind, false, list.m_bytes.size(), length});
        list.m_bytes.append(text, length);
        return 1;
    }
    static int addString(void* list, Bytes text, std::size_t length) {
        return addText(list, Kind::string, reinterpret_cast<const char*>(text), length);
    }
    static yajl_callbacks callbacks() {
        yajl_callbacks table{};
        table.yajl_null = [](void* list) { return add(list, Kind::null); };
        table.yajl_boolean = [](void* list, int value) {
            return add(list, Kind::boolean, value != 0);
        };
        table.yajl_number = [](void* list, const char* text, std::size_t length) {
            return addText(list, Kind::number, text, length);
        };
        table.yajl_string = addString;
        table.yajl_start_map = [](void* list) { return add(list, Kind::startMap); };
        table.yajl_map_key = addString;
        table.yajl_end_map = [](void* list) { return add(list, Kind::endMap); };
        table.yajl_start_array = [](void* list) { return add(list, Kind::startArray); };
        table.yajl_end_array = [](void* list) { return add(list, Kind::endArray); };
        return table;
    }
};

TokenList::TokenList(const std::string& text) {
    static const yajl_callbacks callbacks = Recorder::callbacks();
    parse(callbacks, this, text);
}

template<class Use>
auto TokenList::generate(const Use& use) const {
    yajl_gen gen = yajl_gen_alloc(nullptr);
    yajl_gen_config(gen, yajl_gen_beautify, 1);
    yajl_gen_config(gen, yajl_gen_indent_string, "    ");
    for (const Token& token : m_tokens) {
        switch (token.kind) {
            case Kind::null:
                yajl_gen_null(gen);
                break;
            case Kind::boolean:
                yajl_gen_bool(gen, token.value ? 1 : 0);
                break;
            case Kind::number:
                yajl_gen_number(gen, m_bytes.data() + token.begin, token.length);
                break;
            case Kind::string:
                yajl_gen_string(gen, bytes(m_bytes) + token.begin, token.length);
                break;
            case Kind::startMap:
                yajl_gen_map_open(gen);
                break;
            case Kind::endMap:
                yajl_gen_map_close(gen);
                break;
            case Kind::startArray:
                yajl_gen_array_open(gen);
                break;
            case Kind::endArray:
                yajl_gen_array_close(gen);
                break;
        }
    }
    Bytes buffer = nullptr;
    std::size_t length = 0;
    yajl_gen_get_buf(gen, &buffer, &length);
    auto result = use(reinterpret_cast<const char*>(buffer), length);
    yajl_gen_free(gen);
    return result;
}

std::size_t TokenList::write() const {
    return generate([](const char*, std::size_t length) { return length; });
}

std::string TokenList::text() const {
    return generate([](const char* text, std::size_t length) { return std::string(text, length); });
}

}  // namespace orvid_bench
