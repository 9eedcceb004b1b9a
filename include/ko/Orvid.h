// SPDX-License-Identifier: MIT
//
// The whole public interface of the library.

#pragma once

#include <ko/convert.h>
#include <ko/DecNumber.h>
#include <ko/Exception.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/CallbackParser.h>
#include <ko/Orvid/convert.h>
#include <ko/Orvid/describe.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/ElementCreator.h>
#include <ko/Orvid/ElementGetter.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/FileLock.h>
#include <ko/Orvid/FromSchemaPathConverter.h>
#include <ko/Orvid/Generator.h>
#include <ko/Orvid/JsonLines.h>
#include <ko/Orvid/JsonPatch.h>
#include <ko/Orvid/JsonPath.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/LimitExceeded.h>
#include <ko/Orvid/literals.h>
#include <ko/Orvid/MergePatch.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/parse.h>
#include <ko/Orvid/PatchException.h>
#include <ko/Orvid/Path.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/PathGenerator.h>
#include <ko/Orvid/PathParser.h>
#include <ko/Orvid/PathView.h>
#include <ko/Orvid/ReadOptions.h>
#include <ko/Orvid/SafeFile.h>
#include <ko/Orvid/SchemaDefaults.h>
#include <ko/Orvid/serialize.h>
#include <ko/Orvid/sourceExcerpt.h>
#include <ko/Orvid/SourcePlace.h>
#include <ko/Orvid/ToSchemaPathConverter.h>
#include <ko/Orvid/TypeException.h>
#include <ko/Orvid/types.h>
#include <ko/Orvid/ValueOutOfRange.h>
#include <ko/Orvid/visit.h>
#include <ko/Orvid/WriteOptions.h>
#include <ko/StringRef.h>
