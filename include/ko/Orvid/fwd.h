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
class CallbackParser;
class CallbackParserListener;
class Dom;
class DomParser;
class Element;
class ElementCreator;
class ElementGetter;
class Exception;
class FileException;
class FromSchemaPathConverter;
class Generator;
class JsonPointer;
class KeyNotFound;
class Number;
template<class Key, class Value, class Compare = std::less<Key>>
class Object;
class ParseException;
class PatchException;
class Path;
class PathGenerator;
class PathNotFound;
class PathParser;
class PathParserListener;
struct ReadOptions;
class SafeFile;
class ToSchemaPathConverter;
template<class Type>
class TypeException;
template<class Value, class Limit>
class ValueOutOfRange;
struct WriteOptions;

/// The path of `element` from its root, as Element::path(nullptr) writes it. Exceptions with
/// element context call it when they are built; it is declared here so that they need not know
/// elements.
std::string pathText(const Element& element);

}  // namespace Orvid
}  // namespace ko
