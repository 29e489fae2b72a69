// SPDX-License-Identifier: MIT
#include "platform/remote/fetch/CurlTransfer.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"

#include <cerrno>
#include <string_view>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr std::size_t mostHeaderBytes = 65536;
constexpr int mostRedirects = 3;
constexpr int libraryFoundTooLarge = 100; // CURLE_TOO_LARGE, since 8.6.0: headers without an end

bool isRedirect(long status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

CurlTransfer::CurlTransfer(const CurlLibrary& library, CURL* easy, FetchRequest request, Fetcher::Done done)
    : m_library(library), m_request(std::move(request)), m_done(std::move(done)), m_easy(easy) {
    if (m_easy != nullptr) {
        setUp();
    }
}

CurlTransfer::~CurlTransfer() {
    if (m_easy != nullptr) {
        m_library.easyReset(m_easy); // nothing of ours stays in it, least of all a password
    }
    m_library.slistFreeAll(m_headers);
}

void CurlTransfer::setUp() {
    const auto set = [this](CURLoption option, auto value) { m_library.easySetopt(m_easy, option, value); };
    set(CURLOPT_PRIVATE, static_cast<void*>(this));
    set(CURLOPT_ERRORBUFFER, static_cast<char*>(m_details));
    set(CURLOPT_URL, m_request.url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_FOLLOWLOCATION, 0L);
    set(CURLOPT_PROXY, ""); // the address that was named, not what the environment puts in between
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
    set(CURLOPT_USERAGENT, "vantor");
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(m_request.patience.count()));
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_request.patience.count()));
    set(CURLOPT_WRITEFUNCTION, &CurlTransfer::takeBody);
    set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    set(CURLOPT_HEADERFUNCTION, &CurlTransfer::takeHeader);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_FORBID_REUSE, m_request.isLastForNow ? 1L : 0L);
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    if (m_request.access != nullptr) {
        setUpAccess(*m_request.access);
    }
    if (!m_request.accept.empty()) {
        m_headers = m_library.slistAppend(m_headers, ("Accept: " + m_request.accept).c_str());
    }
    set(CURLOPT_HTTPHEADER, m_headers);
    if (!m_request.form.empty()) {
        set(CURLOPT_POSTFIELDSIZE, static_cast<long>(m_request.form.size()));
        set(CURLOPT_POSTFIELDS, m_request.form.c_str());
    }
}

void CurlTransfer::setUpAccess(const Access& access) {
    const auto set = [this](CURLoption option, auto value) { m_library.easySetopt(m_easy, option, value); };
    const auto setText = [&set](CURLoption option, const std::string& text) {
        if (!text.empty()) {
            set(option, text.c_str());
        }
    };
    if (!access.user.empty() || !access.password.empty()) {
        set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
        set(CURLOPT_USERNAME, access.user.c_str());
        setText(CURLOPT_PASSWORD, access.password);
    } else if (!access.bearer.empty()) {
        set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BEARER));
        setText(CURLOPT_XOAUTH2_BEARER, access.bearer);
    }
    setText(CURLOPT_CAINFO, access.authority);
    setText(CURLOPT_SSLCERT, access.certificate);
    setText(CURLOPT_SSLKEY, access.key);
    if (access.believesAnybody) {
        set(CURLOPT_SSL_VERIFYPEER, 0L);
        set(CURLOPT_SSL_VERIFYHOST, 0L);
    }
    for (const std::string& header : access.headers) {
        m_headers = m_library.slistAppend(m_headers, header.c_str());
    }
}

std::optional<std::chrono::steady_clock::time_point> CurlTransfer::slowFrom() const {
    constexpr int part = 5;
    const bool isQuiet = !m_isSlow && m_headerBytes == 0;
    return isQuiet ? std::optional(m_begun + m_request.patience / part) : std::nullopt;
}

bool CurlTransfer::becomeSlow() {
    curl_off_t lookup = 0; // microseconds; 0 until the name is resolved
    m_library.easyGetinfo(m_easy, CURLINFO_NAMELOOKUP_TIME_T, &lookup);
    m_isSlow = lookup > 0;
    return m_isSlow;
}

std::size_t CurlTransfer::takeBody(char* bytes, std::size_t size, std::size_t count, void* transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    const std::size_t length = size * count;
    if (length > self.m_request.mostBytes - self.m_answer.body.size()) {
        self.m_isTooLarge = true;
        return 0; // anything but the length ends the exchange
    }
    if (self.m_answer.body.empty()) { // it doubles from here: no copy is made when it is nearly at its bound
        constexpr std::size_t first = 16384;
        self.m_answer.body.reserve(first);
    }
    self.m_answer.body.append(bytes, length);
    return length;
}

std::size_t CurlTransfer::takeHeader(char* /*bytes*/, std::size_t size, std::size_t count, void* transfer) {
    auto& self = *static_cast<CurlTransfer*>(transfer);
    self.m_headerBytes += size * count;
    self.m_isTooLarge = self.m_isTooLarge || self.m_headerBytes > mostHeaderBytes;
    return self.m_isTooLarge ? 0 : size * count;
}

int CurlTransfer::systemError() const {
    long number = 0;
    m_library.easyGetinfo(m_easy, CURLINFO_OS_ERRNO, &number);
    return static_cast<int>(number);
}

/// Why the server ended TLS, in its alert's own words ("certificate required", RFC 8446 B.2): OpenSSL tells
/// "...:tlsv13 alert certificate required, errno 0", in TLS 1.3 only once the answer is read. Else empty.
std::string CurlTransfer::tlsAlert() const {
    constexpr std::string_view before = " alert ";
    const std::string_view details(m_details);
    const std::size_t start = details.find(before);
    if (start == std::string_view::npos) {
        return {};
    }
    const std::string_view alert = details.substr(start + before.size());
    return "it refuses us: " + printableText(alert.substr(0, alert.find(',')), 64);
}

/// A server of TLS 1.3 looks at our certificate when for us the connection stands already. What it says of it
/// may be lost: whoever writes to a closed connection loses what could still be read.
std::string CurlTransfer::endedEarly() const {
    const std::string alert = tlsAlert();
    const bool isNobody = m_request.access == nullptr || m_request.access->certificate.empty();
    if (alert.empty() && isNobody && m_headerBytes == 0 && originOf(m_request.url).starts_with("https:")) {
        return "it closed the connection, and may want a certificate of ours";
    }
    return alert.empty() ? "the answer ended early" : alert;
}

/// In words that name what somebody can mend; never the address, which the host tells beside it.
std::string CurlTransfer::problemOf(CURLcode code) const {
    if (m_isTooLarge || static_cast<int>(code) == libraryFoundTooLarge) {
        return "the answer is too large";
    }
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return unknownName;
    case CURLE_COULDNT_CONNECT:
        return systemError() == ECONNREFUSED ? refusal : "cannot be reached";
    case CURLE_OPERATION_TIMEDOUT:
        return "no whole answer in time";
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return endedEarly();
    case CURLE_PEER_FAILED_VERIFICATION:
        return "its certificate is not trusted";
    case CURLE_SSL_CONNECT_ERROR:
        return tlsAlert().empty() ? "no TLS there" : tlsAlert();
    case CURLE_WRITE_ERROR:
    case CURLE_BAD_CONTENT_ENCODING:
        return "the answer cannot be unpacked";
    default:
        return printableText(m_library.easyStrerror(code), 128);
    }
}

/// Whether there is more to do: a server may point to another path of its own. Credentials and questions stay
/// on the origin that was named.
bool CurlTransfer::redirect() {
    const char* target = nullptr;
    m_library.easyGetinfo(m_easy, CURLINFO_REDIRECT_URL, &target);
    if (target == nullptr || originOf(target) != originOf(m_request.url)) {
        fail("it points to another address, which is not followed");
        return false;
    }
    if (++m_redirects > mostRedirects) {
        fail("it points from one page to the next");
        return false;
    }
    m_request.url = target;
    m_answer = FetchAnswer();
    m_headerBytes = 0;
    m_library.easySetopt(m_easy, CURLOPT_URL, m_request.url.c_str());
    return true;
}

bool CurlTransfer::ended(CURLcode code) {
    if (code != CURLE_OK) {
        // A header's end is a WRITE_ERROR as well, or an error of its own in newer versions.
        fail(problemOf(code));
        return false;
    }
    long status = 0;
    m_library.easyGetinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    if (isRedirect(status)) {
        return redirect();
    }
    const char* type = nullptr;
    m_library.easyGetinfo(m_easy, CURLINFO_CONTENT_TYPE, &type);
    m_answer.status = static_cast<int>(status);
    m_answer.contentType = type != nullptr ? type : "";
    m_answer.taken = std::chrono::steady_clock::now().time_since_epoch();
    m_done(std::move(m_answer));
    return false;
}

void CurlTransfer::fail(std::string problem) {
    FetchAnswer answer;
    answer.problem = std::move(problem);
    answer.taken = std::chrono::steady_clock::now().time_since_epoch();
    m_done(std::move(answer));
}

} // namespace vantor::platform::remote
