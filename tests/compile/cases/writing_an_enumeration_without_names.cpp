// refused: static.assert(ion)? failed.*this type does not convert
#include <ko/Orvid.h>

#include <string>
#include <vector>

struct Unknown {};

enum class Level { low };

void write(ko::Orvid::Element& element) { element.set(Level::low); }
