// SPDX-License-Identifier: MIT
//
// The verbs, each made by the file of its name.

#pragma once

#include <memory>

#include "call/Verb.h"

namespace orvid_tool {

std::unique_ptr<Verb> makePrint();
std::unique_ptr<Verb> makeGet();
std::unique_ptr<Verb> makeSet();
std::unique_ptr<Verb> makeInsert();
std::unique_ptr<Verb> makeRemove();
std::unique_ptr<Verb> makeFind();
std::unique_ptr<Verb> makeQuery();
std::unique_ptr<Verb> makeSelect();
std::unique_ptr<Verb> makeRename();
std::unique_ptr<Verb> makeMove();
std::unique_ptr<Verb> makeCopy();
std::unique_ptr<Verb> makeKeys();
std::unique_ptr<Verb> makeLength();
std::unique_ptr<Verb> makeType();
std::unique_ptr<Verb> makeSplit();
std::unique_ptr<Verb> makeJoin();
std::unique_ptr<Verb> makeCsv();
std::unique_ptr<Verb> makeUncsv();
std::unique_ptr<Verb> makeEdit();
std::unique_ptr<Verb> makePaths();
std::unique_ptr<Verb> makeUnpaths();
std::unique_ptr<Verb> makeDefaults();
std::unique_ptr<Verb> makeDiff();
std::unique_ptr<Verb> makePatch();
std::unique_ptr<Verb> makeMerge();
std::unique_ptr<Verb> makeCheck();
std::unique_ptr<Verb> makeSchemaPath();
std::unique_ptr<Verb> makeDataPath();

}  // namespace orvid_tool
