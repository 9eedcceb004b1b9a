// accepted
#include <ko/Orvid.h>

// One name of each public header, by the one that has them all.
using namespace ko;
using namespace ko::Orvid;

std::wstring wide(const std::string& text) { return wconvert(text); }
std::string narrow(const std::wstring& text) { return convert(text); }
Element made(const JsonPath& query, const JsonPointer& pointer) {
    return makeObject({{"q", query.str()}, {"p", pointer.str()}, {"d", DecNumber(1)}});
}

using Names = void (*)(const ko::Exception&, const StringRef<char>&, const Orvid::Exception&,
                       const Path&, const PathView&, const PathStep&, const PathNotFound&,
                       const Number&, const TypeException<EType>&,
                       const ValueOutOfRange<Number, int>&, const LimitExceeded&,
                       const PatchException&, const FileException&, const FileLock&,
                       const SafeFile&, const ReadOptions&, const WriteOptions&, const SourcePlace&,
                       const JsonLines&, const Dom&, DomParser&, CallbackParser&, Generator&,
                       PathParser&, PathGenerator&, ElementGetter&, ElementCreator&,
                       ToSchemaPathConverter&, FromSchemaPathConverter&, Element::TArray&,
                       Element::TObject&, IndexList<int>&, ListMap<int, int, std::less<int>>&);

struct Server {
    std::string host;
    ORVID_FIELDS(Server, host)
};

int main() {
    Element element = parse(R"({"host":"a"})");
    mergePatch(element, "{}"_json);
    applyPatch(element, makePatch(element, element));
    const std::string text = serialize(element) + element.to<Server>().host;
    try {
        return static_cast<int>(fillDefaults(element));
    } catch (const ParseException& error) {
        return static_cast<int>((describe(error) + sourceExcerpt(text, error)).size());
    }
}
