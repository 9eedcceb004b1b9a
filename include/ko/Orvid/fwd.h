// SPDX-License-Identifier: MIT
//
// Forward declarations of everything that the library offers, for headers that only name it.

#pragma once

#include <functional>
#include <string>

namespace ko {

class DecNumber;
class Exception;
template<class T>
class IndexList;
template<class Key, class Value, class Compare>
class ListMap;
template<class Char>
class StringRef;

namespace Orvid {

template<class T>
class Array;
struct BuildMember;
class BuildValue;
class CallbackParser;
class CallbackParserListener;
struct DiffOptions;
class Dom;
class DomParser;
class Element;
class ElementCreator;
class ElementGetter;
class Exception;
class FileException;
class FileLock;
struct FileStamp;
struct FillOptions;
class FromSchemaPathConverter;
class Generator;
class JsonLines;
class JsonPath;
class JsonPointer;
class KeyNotFound;
class LimitExceeded;
class Number;
template<class Key, class Value, class Compare = std::less<Key>>
class Object;
enum class ParseErrorCode : int;
class ParseException;
class PatchException;
struct PatchOptions;
class Path;
class PathGenerator;
class PathNotFound;
class PathParser;
class PathParserListener;
struct PathStep;
class PathView;
struct QueryOptions;
struct ReadOptions;
enum class RepeatedKeys;
class SafeFile;
class FileVersion;
class Source;
struct SourcePlace;
struct SourceSpan;
class ToSchemaPathConverter;
template<class Type>
class TypeException;
template<class Value, class Limit>
class ValueOutOfRange;
struct ValueOrigin;
enum class ValueSource : int;
struct WriteOptions;

/// The path of `element` from its root, as Element::path(nullptr) writes it. Exceptions with
/// element context call it when they are built; it is declared here so that they need not know
/// elements. Costs Element::path().
std::string pathText(const Element& element);
/// The text of the JSON Pointer of `element` where an empty key lies on the way to it from its
/// root; empty otherwise. Linear in the depth and the length of the keys.
std::string pointerBelowEmptyKey(const Element& element);

}  // namespace Orvid
}  // namespace ko
