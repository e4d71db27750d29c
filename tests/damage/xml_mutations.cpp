#include "damage/xml_mutations.h"

#include <cctype>
#include <string>
#include <vector>

namespace quillon::test {

namespace {

constexpr std::size_t kDeepest = 5'000;

// An element from "<" to the end of the first end tag of its name; `name` lies in its start tag.
struct ElementPlace {
    Stretch whole;
    Stretch name;
    std::size_t endTag = 0;
};

std::vector<ElementPlace> Elements(const std::string& text) {
    std::vector<ElementPlace> elements;
    for (std::size_t open = text.find('<'); open != std::string::npos;
         open = text.find('<', open + 1)) {
        std::size_t end = open + 1;
        while (end < text.size() && std::isalnum(static_cast<unsigned char>(text[end]))) ++end;
        if (end == open + 1) continue;
        const std::string closing = "</" + text.substr(open + 1, end - open - 1) + ">";
        const std::size_t endTag = text.find(closing, end);
        if (endTag == std::string::npos) continue;
        elements.push_back(
            {{open, endTag + closing.size() - open}, {open + 1, end - open - 1}, endTag});
    }
    return elements;
}

// Applies the change to an element of the document; nothing when it has none.
template <class Change>
void ChangeElement(std::string& text, Random& random, Change change) {
    const auto elements = Elements(text);
    if (!elements.empty()) change(elements[random.Below(elements.size())]);
}

void Rename(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        const char* const kNames[] = {"Renamed", "RawValue", "Profile", "CPs",
                                      "NVs",     "x:y",      "_",       "IsNC"};
        const std::string name = random.Pick(kNames);
        text.replace(element.endTag + 2, element.name.size, name);
        text.replace(element.name.begin, element.name.size, name);
    });
}

void ChangeCase(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        for (const std::size_t begin : {element.name.begin, element.endTag + 2})
            for (std::size_t i = begin; i < begin + element.name.size; ++i)
                text[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[i])));
    });
}

void RemoveElement(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        text.erase(element.whole.begin, element.whole.size);
    });
}

void EmptyElement(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        const std::size_t content = text.find('>', element.name.begin) + 1;
        if (content <= element.endTag) text.erase(content, element.endTag - content);
    });
}

void DoubleElement(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        text.insert(element.whole.begin, text.substr(element.whole.begin, element.whole.size));
    });
}

void NestElement(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        const std::string copy = text.substr(element.whole.begin, element.whole.size);
        text.insert(element.endTag, copy);
    });
}

void NestDeeply(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        const std::size_t depth = 1 + random.Below(kDeepest);
        std::string opening;
        std::string closing;
        for (std::size_t i = 0; i < depth; ++i) {
            opening += "<a>";
            closing += "</a>";
        }
        text.insert(element.whole.begin + element.whole.size, closing);
        text.insert(element.whole.begin, opening);
    });
}

void LoseEndTag(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        text.erase(element.endTag, element.name.size + 3);
    });
}

void AddAttribute(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        const char* const kAttributes[] = {" IsNC=\"1\"", " isnc=\"2147483648\"", " IsNC=\"\"",
                                           " a=\"1\" a=\"2\"", " xmlns=\"urn:other\""};
        text.insert(element.name.begin + element.name.size, random.Pick(kAttributes));
    });
}

void RenameAttribute(std::string& text, Random& random) {
    const char* const kNames[] = {"isNC", "IsNc2", "Is NC", "=", "NC"};
    std::vector<std::size_t> places;
    for (std::size_t place = text.find("IsNC"); place != std::string::npos;
         place = text.find("IsNC", place + 1))
        places.push_back(place);
    if (places.empty()) return AddAttribute(text, random);
    text.replace(places[random.Below(places.size())], 4, random.Pick(kNames));
}

constexpr const char* kEntityBomb =
    "<!DOCTYPE Configuration [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;\">"
    "<!ENTITY c \"&b;&b;&b;&b;&b;&b;\"><!ENTITY e \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>";

// Before the root element, with what it declares used somewhere.
void AddDocumentType(std::string& text, Random& random) {
    const char* const kTypes[] = {
        "<!DOCTYPE Configuration>", "<!DOCTYPE Configuration [<!ENTITY e \"0A1B\">]>",
        "<!DOCTYPE Configuration [<!ENTITY e SYSTEM \"file:///c:/windows/win.ini\">]>",
        "<!DOCTYPE Configuration SYSTEM \"http://localhost:1/x.dtd\">", kEntityBomb};
    const std::size_t root = text.find("<Configuration");
    if (root == std::string::npos) return;
    const std::size_t content = text.find("<AppObjects>");
    if (content != std::string::npos) text.insert(content + 12, "&e;");
    text.insert(root, random.Pick(kTypes));
}

void ChangeContent(std::string& text, Random& random) {
    ChangeElement(text, random, [&](const ElementPlace& element) {
        const char* const kContents[] = {"&#0;",
                                         "&amp;",
                                         "<![CDATA[0A1B]]>",
                                         "<!-- no text -->",
                                         "&#xFFFE;",
                                         "<?pi?>",
                                         "]]>",
                                         "\xC3\xA9",
                                         "GG",
                                         " 00 "};
        const std::size_t content = text.find('>', element.name.begin) + 1;
        if (content <= element.endTag) text.insert(content, random.Pick(kContents));
    });
}

void ChangeDeclaration(std::string& text, Random& random) {
    const char* const kDeclarations[] = {"<?xml version=\"1.1\"?>",
                                         "<?xml version=\"1.0\" encoding=\"UTF-16\"?>",
                                         "<?xml version=\"1.0\" encoding=\"windows-1252\"?>",
                                         "<?xml version=\"1.0\" encoding=\"nonsense\"?>",
                                         "<?xml?>",
                                         " <?xml version=\"1.0\"?>",
                                         ""};
    const std::size_t end = text.find("?>");
    if (end != std::string::npos) text.replace(0, end + 2, random.Pick(kDeclarations));
}

constexpr Mutation kXmlMutations[] = {
    {"element renamed", Rename},
    {"letter case of a name", ChangeCase},
    {"element removed", RemoveElement},
    {"element emptied", EmptyElement},
    {"element doubled", DoubleElement},
    {"element in itself", NestElement},
    {"deep nesting", NestDeeply},
    {"end tag lost", LoseEndTag},
    {"attribute added", AddAttribute},
    {"attribute renamed", RenameAttribute},
    {"document type, entities", AddDocumentType},
    {"other content", ChangeContent},
    {"other declaration", ChangeDeclaration},
};

}  // namespace

std::span<const Mutation> XmlMutations() {
    return kXmlMutations;
}

}  // namespace quillon::test
