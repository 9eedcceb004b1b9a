// refused: static.assert.* failed.*does not convert.*: bool.*ORVID_NAMES.*ORVID_FIELDS.*fromElement
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

std::vector<Unknown> read() { return ko::Orvid::parse("1").to<std::vector<Unknown>>(); }
