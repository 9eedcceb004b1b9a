// refused: static.assert.* failed.*What is no text cannot be entered among texts
#include <ko/ListMap.h>

#include <functional>
#include <string>

struct Letter {
    operator std::string() const { return "a"; }
};
bool operator<(const Letter& left, const std::string& right) { return std::string(left) < right; }
bool operator<(const std::string& left, const Letter& right) { return left < std::string(right); }
bool operator==(const std::string& left, const Letter& right) { return left == std::string(right); }

struct Map : ko::ListMap<std::string, int, std::less<std::string>> {
    void append(const Letter& key) { findOrAppend(key, 1); }
};

void append(Map& map) { map.append(Letter()); }
