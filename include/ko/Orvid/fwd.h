// SPDX-License-Identifier: MIT
//
// Forward declarations of everything that the library offers, for headers that only name it.

#pragma once

#include <functional>

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
enum class ExpectedToken : int;
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

}  // namespace Orvid
}  // namespace ko
