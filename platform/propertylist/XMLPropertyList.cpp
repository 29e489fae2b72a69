// SPDX-License-Identifier: MIT
#include "platform/propertylist/XMLPropertyList.hpp"

#include "platform/propertylist/ExpatParser.hpp"
#include "platform/propertylist/PropertyListTable.hpp"
#include "platform/propertylist/PropertyListText.hpp"

#include <array>
#include <bit>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform {

namespace {

using Kind = PropertyListKind;

enum class Element : std::uint8_t {
    plist,
    array,
    dictionary,
    key,
    string,
    data,
    date,
    integer,
    real,
    yes,
    no,
};

std::optional<Element> elementNamed(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, Element>, 11> names{{
        {"plist", Element::plist},
        {"array", Element::array},
        {"dict", Element::dictionary},
        {"key", Element::key},
        {"string", Element::string},
        {"data", Element::data},
        {"date", Element::date},
        {"integer", Element::integer},
        {"real", Element::real},
        {"true", Element::yes},
        {"false", Element::no},
    }};
    for (const auto& [known, element] : names) {
        if (known == name) {
            return element;
        }
    }
    return std::nullopt;
}

bool holdsObjects(Element element) {
    return element == Element::plist || element == Element::array || element == Element::dictionary;
}

/// Builds the table from expat's events. Members wait on one stack until their container closes.
class XMLReader {
public:
    PropertyListResult read(std::string_view bytes);

private:
    struct Open {
        Element element = Element::plist;
        std::uint32_t node = 0;
        std::size_t firstMember = 0; // on the stack of members
    };

    bool open(std::string_view name);
    bool close();
    bool text(std::string_view piece);
    bool closeContainer(const Open& container);
    bool closeScalar(Element element, PropertyListNode& node);
    bool isUID(const PropertyListNode& dictionary) const;
    void keepText(PropertyListNode& node, Kind kind, std::size_t start);
    std::optional<std::uint32_t> addNode();

    bool fail(const char* reason);
    template<class Step>
    void guarded(Step step);
    void connect();
    static XMLReader& self(void* data) { return *static_cast<XMLReader*>(data); }

    std::shared_ptr<PropertyListTable> m_table = std::make_shared<PropertyListTable>();
    ExpatParser m_parser = makeExpatParser();
    std::vector<Open> m_open;
    std::vector<std::uint32_t> m_members;
    std::string m_text; // of the scalar that is open
    std::optional<PropertyListFailure> m_failure;
    bool m_isOutOfMemory = false;
};

bool XMLReader::fail(const char* reason) {
    if (!m_failure) {
        m_failure = PropertyListFailure{reason, byteIndex(m_parser)};
        XML_StopParser(m_parser.get(), XML_FALSE);
    }
    return false;
}

/// Runs a step of ours inside a callback of expat's, through which no exception may pass.
template<class Step>
void XMLReader::guarded(Step step) {
    try {
        if (!m_failure) {
            step();
        }
    } catch (const std::bad_alloc&) {
        m_isOutOfMemory = true;
        fail(noMemoryForList);
    }
}

void XMLReader::connect() {
    XML_Parser parser = m_parser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* data, const XML_Char* name, const XML_Char** /*attributes*/) {
            self(data).guarded([&] { self(data).open(name); });
        },
        [](void* data, const XML_Char* /*name*/) { self(data).guarded([&] { self(data).close(); }); });
    XML_SetCharacterDataHandler(parser, [](void* data, const XML_Char* piece, int length) {
        self(data).guarded([&] { self(data).text({piece, static_cast<std::size_t>(length)}); });
    });
    // With an internal subset come entities, whose expansion grows without bound. No property list has one.
    XML_SetStartDoctypeDeclHandler(parser,
                                   [](void* data, const XML_Char* /*name*/, const XML_Char* /*system*/,
                                      const XML_Char* /*publicId*/, int hasInternalSubset) {
                                       if (hasInternalSubset != 0) {
                                           self(data).fail("it declares a document type of its own");
                                       }
                                   });
    XML_SetSkippedEntityHandler(parser, [](void* data, const XML_Char* /*name*/, int /*isParameter*/) {
        self(data).fail("it names an unknown entity");
    });
}

PropertyListResult XMLReader::read(std::string_view bytes) {
    connect();
    const XML_Status status =
        XML_Parse(m_parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
    if (m_isOutOfMemory || XML_GetErrorCode(m_parser.get()) == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    if (status != XML_STATUS_OK) {
        fail("it is no well-formed XML");
    }
    if (m_failure) {
        return *m_failure;
    }
    return PropertyListObject(std::move(m_table), m_members.front());
}

std::optional<std::uint32_t> XMLReader::addNode() {
    if (m_table->nodes.size() == propertyListMostObjects) {
        fail("it has too many objects");
        return std::nullopt;
    }
    m_table->nodes.emplace_back();
    return static_cast<std::uint32_t>(m_table->nodes.size() - 1);
}

bool XMLReader::open(std::string_view name) {
    const std::optional<Element> element = elementNamed(name);
    if (!element || (*element == Element::plist) != m_open.empty()) {
        return fail("it is no property list");
    }
    if (*element == Element::plist) {
        m_open.push_back({});
        return true;
    }
    if (m_open.size() > propertyListDeepest) {
        return fail("it is nested too deeply");
    }
    const Open& parent = m_open.back();
    const std::size_t members = m_members.size() - parent.firstMember;
    if (!holdsObjects(parent.element) || (parent.element == Element::plist && members > 0)) {
        return fail("an element stands where none may");
    }
    const bool isKeysTurn = parent.element == Element::dictionary && members % 2 == 0;
    if ((*element == Element::key) != isKeysTurn) {
        return fail("a dictionary's keys and values do not take turns");
    }
    const std::optional<std::uint32_t> node = addNode();
    if (!node) {
        return false;
    }
    m_members.push_back(*node);
    m_open.push_back({*element, *node, m_members.size()});
    m_text.clear();
    return true;
}

bool XMLReader::text(std::string_view piece) {
    if (!m_open.empty() && !holdsObjects(m_open.back().element)) {
        m_text.append(piece);
        return true;
    }
    return piece.find_first_not_of(" \t\r\n") == std::string_view::npos ||
           fail("there is text between elements");
}

bool XMLReader::close() {
    const Open closing = m_open.back();
    m_open.pop_back();
    if (closing.element == Element::plist) {
        return m_members.size() == 1 || fail("it holds no object");
    }
    return holdsObjects(closing.element) ? closeContainer(closing)
                                         : closeScalar(closing.element, m_table->nodes[closing.node]);
}

bool XMLReader::closeContainer(const Open& container) {
    std::vector<std::uint32_t>& references = m_table->references;
    const std::size_t members = m_members.size() - container.firstMember;
    const bool isDictionary = container.element == Element::dictionary;
    if (isDictionary && members % 2 != 0) {
        return fail("a dictionary's keys and values do not take turns");
    }
    PropertyListNode& node = m_table->nodes[container.node];
    node.kind = isDictionary ? Kind::dictionary : Kind::array;
    node.count = static_cast<std::uint32_t>(isDictionary ? members / 2 : members);
    node.value = references.size();
    const auto first = m_members.begin() + static_cast<std::ptrdiff_t>(container.firstMember);
    references.insert(references.end(), first, m_members.end());
    m_members.erase(first, m_members.end());
    if (isDictionary && isUID(node)) {
        const std::uint64_t target = m_table->nodes[references.back()].value;
        node = {.kind = Kind::uid, .value = target};
    }
    return true;
}

bool XMLReader::isUID(const PropertyListNode& dictionary) const {
    if (dictionary.count != 1) {
        return false;
    }
    const PropertyListNode& key = m_table->nodes[m_table->references[dictionary.value]];
    const PropertyListNode& target = m_table->nodes[m_table->references[dictionary.value + 1]];
    const bool isNegative = !target.isWide && std::bit_cast<std::int64_t>(target.value) < 0;
    return m_table->textOf(key) == "CF$UID" && target.kind == Kind::integer && !isNegative;
}

void XMLReader::keepText(PropertyListNode& node, Kind kind, std::size_t start) {
    node.kind = kind;
    node.isWide = true;
    node.value = start;
    node.count = static_cast<std::uint32_t>(m_table->converted.size() - start);
}

bool XMLReader::closeScalar(Element element, PropertyListNode& node) {
    const std::size_t start = m_table->converted.size();
    if (element == Element::key || element == Element::string) {
        m_table->converted.append(m_text);
        keepText(node, Kind::string, start);
        return true;
    }
    if (element == Element::data) {
        const bool isBase64 = appendBase64(m_table->converted, m_text);
        keepText(node, Kind::data, start);
        return isBase64 || fail("a data element holds no base-64");
    }
    if (element == Element::integer) {
        const std::optional<PropertyListInteger> integer = parsePropertyListInteger(m_text);
        node.kind = Kind::integer;
        node.isWide = integer.has_value() && integer->isUnsigned;
        node.value = integer.value_or(PropertyListInteger{}).bits;
        return integer.has_value() || fail("an integer element holds no integer");
    }
    if (element == Element::yes || element == Element::no) {
        node.kind = Kind::boolean;
        node.value = element == Element::yes ? 1 : 0;
        return m_text.empty() || fail("a Boolean element holds text");
    }
    const bool isDate = element == Element::date;
    const std::optional<double> real = isDate ? parsePropertyListDate(m_text) : parsePropertyListReal(m_text);
    node.kind = isDate ? Kind::date : Kind::real;
    node.value = std::bit_cast<std::uint64_t>(real.value_or(0));
    return real.has_value() ||
           fail(isDate ? "a date element holds no date" : "a real element holds no number");
}

} // namespace

PropertyListResult readXMLPropertyList(std::string_view bytes) {
    return XMLReader().read(bytes);
}

} // namespace vantor::platform
