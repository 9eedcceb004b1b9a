// SPDX-License-Identifier: MIT
//
// The list of all verbs.

#include "verbs/verbs.h"

namespace orvid_tool {

std::vector<std::unique_ptr<Verb>> allVerbs() {
    std::vector<std::unique_ptr<Verb>> verbs;
    verbs.push_back(makePrint());
    verbs.push_back(makeGet());
    verbs.push_back(makeSet());
    verbs.push_back(makeInsert());
    verbs.push_back(makeRemove());
    verbs.push_back(makeRename());
    verbs.push_back(makeMove());
    verbs.push_back(makeCopy());
    verbs.push_back(makeFind());
    verbs.push_back(makeQuery());
    verbs.push_back(makeSelect());
    verbs.push_back(makeKeys());
    verbs.push_back(makeLength());
    verbs.push_back(makeType());
    verbs.push_back(makeSplit());
    verbs.push_back(makeJoin());
    verbs.push_back(makeCsv());
    verbs.push_back(makeUncsv());
    verbs.push_back(makeEdit());
    verbs.push_back(makePaths());
    verbs.push_back(makeUnpaths());
    verbs.push_back(makeDefaults());
    verbs.push_back(makeDiff());
    verbs.push_back(makePatch());
    verbs.push_back(makeMerge());
    verbs.push_back(makeCheck());
    verbs.push_back(makeSchemaPath());
    verbs.push_back(makeDataPath());
    return verbs;
}

}  // namespace orvid_tool
