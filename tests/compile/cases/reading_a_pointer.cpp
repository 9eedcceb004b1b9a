// refused: static.assert(ion)? failed.*this type does not convert
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

const char* read() { return ko::Orvid::parse("1").to<const char*>(); }
