// SPDX-License-Identifier: MIT
#pragma once

#include <expat.h>

#include <cstddef>
#include <memory>

namespace vantor::platform {

struct ExpatParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ExpatParser = std::unique_ptr<XML_ParserStruct, ExpatParserDeleter>;

/// A parser whose memory comes from operator new, so that everything a property list costs is counted,
/// bounded and made to fail in one place. Throws std::bad_alloc.
[[nodiscard]] ExpatParser makeExpatParser();

/// The byte at which a parser is.
[[nodiscard]] std::size_t byteIndex(const ExpatParser& parser);

} // namespace vantor::platform
