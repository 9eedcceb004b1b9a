// SPDX-License-Identifier: MIT
//
// Asks the compiler, the dynamic linker and the kernel.

#include "provenance.h"

#include <dlfcn.h>
#include <json-c/json_c_version.h>
#include <json/version.h>
#include <rapidjson/rapidjson.h>
#include <yajl/yajl_version.h>
#include <boost/version.hpp>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace orvid_bench {

namespace {

std::string cpu() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);) {
        if (line.compare(0, 10, "model name") == 0) {
            return line.substr(line.find(':') + 2);
        }
    }
    return "unknown";
}

std::string commit() {
    const char* const text = std::getenv("ORVID_BENCH_COMMIT");
    return text != nullptr ? text : "unknown";
}

std::string dotted(int major, int minor, int patch) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

}  // namespace

std::vector<std::pair<std::string, std::string>> provenance() {
    return {{"commit", commit()},
            {"compiler", ORVID_BENCH_COMPILER},
            {"flags", ORVID_BENCH_FLAGS},
            {"CPU", cpu()},
            {"allocator", allocator()},
            {"YAJL", dotted(YAJL_MAJOR, YAJL_MINOR, YAJL_MICRO)},
            {"ordered_json", dotted(NLOHMANN_JSON_VERSION_MAJOR, NLOHMANN_JSON_VERSION_MINOR,
                                    NLOHMANN_JSON_VERSION_PATCH)},
            {"jsoncpp", JSONCPP_VERSION_STRING},
            {"json-c", JSON_C_VERSION},
            {"RapidJSON", RAPIDJSON_VERSION_STRING},
            {"Boost.JSON", BOOST_LIB_VERSION}};
}

std::string allocator() {
    Dl_info info{};
    if (dladdr(dlsym(RTLD_DEFAULT, "malloc"), &info) == 0 || info.dli_fname == nullptr) {
        return "unknown";
    }
    return std::filesystem::path(info.dli_fname).filename().string();
}

bool isMimalloc() { return allocator().find("mimalloc") != std::string::npos; }

std::string obstacle() {
#ifndef NDEBUG
    return "assertions are on";
#elif defined(_GLIBCXX_ASSERTIONS) || defined(_GLIBCXX_DEBUG)
    return "the standard library's assertions are on";
#elif !defined(__OPTIMIZE__)
    return "the optimizer is off";
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return "a sanitizer is on";
#else
    return "";
#endif
}

}  // namespace orvid_bench
