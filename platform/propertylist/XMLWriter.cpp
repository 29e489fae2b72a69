// SPDX-License-Identifier: MIT
// How the XML form is written: one element a line, so that two versions can be compared by people.
#include "platform/core/Utf8.hpp"
#include "platform/propertylist/PropertyListTable.hpp"
#include "platform/propertylist/PropertyListText.hpp"
#include "platform/propertylist/PropertyListWriter.hpp"

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform {

namespace {

using Kind = PropertyListKind;

constexpr std::string_view prologue = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
)";

class XMLWriter {
public:
    explicit XMLWriter(const PropertyListTable& table) : m_table(table) {}

    PropertyListBytes write(std::uint32_t top) {
        m_bytes = prologue;
        writeObject(top, false);
        while (!m_open.empty() && m_failure == nullptr) {
            step();
        }
        m_bytes += "</plist>\n";
        if (m_failure != nullptr) {
            return PropertyListFailure{m_failure, m_bytes.size()};
        }
        return std::move(m_bytes);
    }

private:
    struct Open {
        const PropertyListNode* node;
        std::size_t next = 0; // of its references
    };

    /// Writes the next member of the innermost container, or closes it. Depth is the list's choice, hence a
    /// stack of our own.
    void step() {
        Open& open = m_open.back();
        const bool isDictionary = open.node->kind == Kind::dictionary;
        const std::size_t members = isDictionary ? 2 * std::size_t{open.node->count} : open.node->count;
        if (open.next == members) {
            m_open.pop_back();
            line(isDictionary ? "</dict>" : "</array>");
            return;
        }
        const bool isKey = isDictionary && open.next % 2 == 0;
        const std::uint32_t member = m_table.references[open.node->value + open.next++];
        writeObject(member, isKey);
        if (m_bytes.size() > propertyListMostBytes) {
            m_failure = listTooLarge;
        }
    }

    void line(std::string_view text) { m_bytes.append(m_open.size(), '\t').append(text).push_back('\n'); }

    void element(std::string_view name, std::string_view content) {
        m_bytes.append(m_open.size(), '\t');
        m_bytes.append("<").append(name).append(">");
        m_bytes.append(content);
        m_bytes.append("</").append(name).append(">\n");
    }

    void writeObject(std::uint32_t index, bool isKey) {
        const PropertyListNode& node = m_table.nodes[index];
        switch (node.kind) {
        case Kind::null:
            m_failure = "the XML form has no null";
            break;
        case Kind::boolean:
            line(node.value != 0 ? "<true/>" : "<false/>");
            break;
        case Kind::integer:
            element("integer", node.isWide ? std::to_string(node.value)
                                           : std::to_string(std::bit_cast<std::int64_t>(node.value)));
            break;
        case Kind::real:
            element("real", propertyListRealText(std::bit_cast<double>(node.value)));
            break;
        case Kind::date:
            writeDate(std::bit_cast<double>(node.value));
            break;
        case Kind::data:
            writeData(m_table.textOf(node));
            break;
        case Kind::string:
            element(isKey ? "key" : "string", escaped(m_table.textOf(node)));
            break;
        case Kind::uid:
            line("<dict><key>CF$UID</key><integer>" + std::to_string(node.value) + "</integer></dict>");
            break;
        case Kind::array:
        case Kind::dictionary:
            openContainer(node);
            break;
        }
    }

    void openContainer(const PropertyListNode& node) {
        const bool isDictionary = node.kind == Kind::dictionary;
        if (node.count == 0) {
            line(isDictionary ? "<dict/>" : "<array/>");
            return;
        }
        if (m_open.size() + 1 >= propertyListDeepest) { // so does a circle end
            m_failure = "it is nested too deeply";
            return;
        }
        line(isDictionary ? "<dict>" : "<array>");
        m_open.push_back({&node});
    }

    void writeDate(double date) {
        if (const std::optional<std::string> text = propertyListDateText(date)) {
            element("date", *text);
        } else {
            m_failure = "the XML form has no such date";
        }
    }

    void writeData(std::string_view bytes) {
        std::string text;
        appendAsBase64(text, bytes);
        element("data", text);
    }

    std::string escaped(std::string_view text) {
        std::string result;
        while (!text.empty()) {
            const char32_t c = takeUtf8(text).value_or(0xFFFD);
            if (c == U'<' || c == U'>' || c == U'&') {
                result += c == U'<' ? "&lt;" : c == U'>' ? "&gt;" : "&amp;";
            } else if (c == U'\r') {
                result += "&#13;"; // as it is, a parser would make a line feed of it
            } else if ((c < 0x20 && c != U'\t' && c != U'\n') || c == 0xFFFE || c == 0xFFFF) {
                m_failure = "a text holds a character that XML has not";
            } else {
                appendUtf8(result, c);
            }
        }
        return result;
    }

    const PropertyListTable& m_table;
    std::vector<Open> m_open;
    std::string m_bytes;
    const char* m_failure = nullptr;
};

} // namespace

PropertyListBytes writeXMLPropertyList(const PropertyListObject& list) {
    return XMLWriter(list.table()).write(list.index());
}

} // namespace vantor::platform
