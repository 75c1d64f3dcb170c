#include "CupsConnection.h"

#include "SigPipeGuard.h"

#include <Zelmar01/core/Translation.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <system_error>
#include <utility>

namespace Zelmar01 {

namespace {

using namespace std::chrono_literals;

// libcups looks at the time that is left after each of its waits.
constexpr std::chrono::duration<double> waitSlice = 200ms;

struct TServer
{
    std::string Host;
    int Port;
};

TServer serverOf(const std::string &setting)
{
    if (setting.empty())
        return {cupsServer(), ippPort()};
    const auto colon = setting.rfind(':');
    if (setting.front() == '/' || colon == std::string::npos || setting.find(']', colon) != std::string::npos)
        return {setting, ippPort()};
    auto host = setting.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    return {host, std::atoi(setting.c_str() + colon + 1)};
}

// The first use of libcups makes the whole process ignore SIGPIPE.
http_t *connectLeavingSignals(const TServer &server, std::chrono::milliseconds timeout)
{
    // libcups takes 0 for "do not connect" and less for "wait for ever".
    const auto milliseconds = std::clamp(timeout, 1ms, std::chrono::milliseconds(24h)).count();
    struct sigaction before = {};
    sigaction(SIGPIPE, nullptr, &before);
    http_t *http = httpConnect2(server.Host.c_str(), server.Port, nullptr, AF_UNSPEC,
                                HTTP_ENCRYPTION_IF_REQUESTED, 1, static_cast<int>(milliseconds), nullptr);
    sigaction(SIGPIPE, &before, nullptr);
    return http;
}

// A server has nothing to say between two requests, unless it has closed the connection.
bool isClosedByServer(http_t *http)
{
    pollfd end{httpGetFd(http), POLLIN, 0};
    return poll(&end, 1, 0) != 0;
}

// The path that the request is posted to: that of the printer's URI, which libcups encodes once more.
std::string resourceOf(ipp_t *request)
{
    auto *uri = ippFindAttribute(request, "printer-uri", IPP_TAG_URI);
    char scheme[16], user[2], host[16], resource[HTTP_MAX_URI] = "/";
    int port = 0;
    if (uri)
        httpSeparateURI(HTTP_URI_CODING_ALL, ippGetString(uri, 0, nullptr), scheme, sizeof scheme, user,
                        sizeof user, host, sizeof host, &port, resource, sizeof resource);
    return resource;
}

std::string startServer()
{
    return Translate("Zelmar01", "vérifier son nom et que le service d'impression (CUPS) est démarré");
}

} // namespace

int CupsConnection::goesOn(http_t *, void *wait)
{
    auto &[deadline, over] = *static_cast<TWait *>(wait);
    over = std::chrono::steady_clock::now() >= deadline;
    return over ? 0 : 1;
}

void CupsConnection::startWait()
{
    m_wait = {std::chrono::steady_clock::now() + m_options.ReplyTimeout, false};
}

bool CupsConnection::Connect()
{
    if (m_http && !isClosedByServer(m_http))
        return true;
    Close();
    m_wait.Over = false;
    const auto server = serverOf(m_options.Server);
    m_server = server.Host.starts_with('/') ? server.Host : server.Host + ":" + std::to_string(server.Port);
    m_http = connectLeavingSignals(server, m_options.ConnectTimeout);
    if (!m_http)
        return fail(cupsLastError(), Translate("Zelmar01", "injoignable"), startServer());
    httpSetTimeout(m_http, waitSlice.count(), goesOn, &m_wait);
    startWait();
    // Asked for at the connecting, encryption would be waited for by libcups's own time-outs. A socket of
    // this machine has none.
    const auto encryption = cupsEncryption();
    const bool mustEncrypt = encryption == HTTP_ENCRYPTION_REQUIRED || encryption == HTTP_ENCRYPTION_ALWAYS;
    if (mustEncrypt && !server.Host.starts_with('/') && httpEncryption(m_http, encryption) != 0)
        return failConnection(Translate("Zelmar01", "la connexion chiffrée n'a pas pu être établie"));
    return true;
}

void CupsConnection::Close()
{
    if (!m_http)
        return;
    const SigPipeGuard guard;
    httpClose(std::exchange(m_http, nullptr));
}

TIpp CupsConnection::NewRequest(ipp_op_t operation, const std::string &printer)
{
    TIpp request(ippNewRequest(operation));
    if (!printer.empty()) {
        char uri[HTTP_MAX_URI] = "";
        httpAssembleURIf(HTTP_URI_CODING_ALL, uri, sizeof uri, "ipp", nullptr, "localhost", 0, "/printers/%s",
                         printer.c_str());
        ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri);
    }
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    return request;
}

TIpp CupsConnection::Ask(const TIpp &request)
{
    return BeginRequest(request, false) ? EndRequest() : nullptr;
}

bool CupsConnection::BeginRequest(const TIpp &request, bool hasDocument)
{
    const SigPipeGuard guard;
    m_answerMissing = false;
    if (!Connect())
        return false;
    startWait();
    httpClearFields(m_http);
    httpSetField(m_http, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
    // A length of 0 announces chunks: the server cannot take a document that was cut short for a whole one.
    httpSetLength(m_http, hasDocument ? 0 : ippLength(request.get()));
    if (httpPost(m_http, resourceOf(request.get()).c_str()) != 0)
        return failConnection(Translate("Zelmar01", "la demande n'a pas pu être envoyée"));
    ippSetState(request.get(), IPP_STATE_IDLE);
    for (auto state = IPP_STATE_IDLE; state != IPP_STATE_DATA;) {
        state = ippWrite(m_http, request.get());
        if (state == IPP_STATE_ERROR)
            return failConnection(Translate("Zelmar01", "la demande n'a pas pu être envoyée"));
    }
    return true;
}

bool CupsConnection::SendDocument(std::string_view bytes)
{
    const SigPipeGuard guard;
    startWait();
    // The call may claim success after a time-out or an error.
    if (httpWrite2(m_http, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) ||
        httpFlushWrite(m_http) < 0 || httpError(m_http) || m_wait.Over)
        return failConnection(Translate("Zelmar01", "le document n'a pas pu être envoyé"));
    return true;
}

TIpp CupsConnection::EndRequest()
{
    const SigPipeGuard guard;
    startWait();
    if (httpIsChunked(m_http) && httpWrite2(m_http, "", 0) < 0) {
        failConnection(Translate("Zelmar01", "le document n'a pas pu être envoyé"));
        return nullptr;
    }
    http_status_t status = HTTP_STATUS_CONTINUE;
    while (status == HTTP_STATUS_CONTINUE && goesOn(m_http, &m_wait))
        status = httpUpdate(m_http);
    if (status < HTTP_STATUS_OK) {
        failAnswer(Translate("Zelmar01", "la réponse n'est pas venue"));
        return nullptr;
    }
    if (refused(status))
        return nullptr;
    TIpp answer(ippNew());
    for (auto state = IPP_STATE_IDLE; state != IPP_STATE_DATA;) {
        state = goesOn(m_http, &m_wait) ? ippRead(m_http, answer.get()) : IPP_STATE_ERROR;
        if (state == IPP_STATE_ERROR) {
            failAnswer(Translate("Zelmar01", "la réponse est illisible"));
            return nullptr;
        }
    }
    httpFlush(m_http);
    if (refused(answer.get()))
        return nullptr;
    if (std::string_view(httpGetField(m_http, HTTP_FIELD_CONNECTION)) == "close")
        Close();
    return answer;
}

bool CupsConnection::NotFound() const
{
    return m_cause.Code == IPP_STATUS_ERROR_NOT_FOUND;
}

bool CupsConnection::fail(int code, const std::string &why, const std::string &remedy)
{
    m_cause = {code, Filled(Translate("Zelmar01", "serveur d'impression %1 : %2"), {m_server, why}), remedy};
    Close();
    return false;
}

bool CupsConnection::failConnection(const std::string &why)
{
    const int error = m_wait.Over ? ETIMEDOUT : httpError(m_http) ? httpError(m_http) : ECONNRESET;
    return fail(error, why + " (" + std::generic_category().message(error) + ")", startServer());
}

void CupsConnection::failAnswer(const std::string &why)
{
    failConnection(why);
    m_answerMissing = true;
}

bool CupsConnection::refused(http_status_t status)
{
    if (status == HTTP_STATUS_OK)
        return false;
    if (status == HTTP_STATUS_UNAUTHORIZED || status == HTTP_STATUS_FORBIDDEN)
        fail(status, Translate("Zelmar01", "accès refusé sans mot de passe"),
             Translate("Zelmar01", "autoriser l'impression aux utilisateurs de ce poste"));
    else if (status == HTTP_STATUS_UPGRADE_REQUIRED)
        fail(status, Translate("Zelmar01", "connexion chiffrée exigée"),
             Translate("Zelmar01", "mettre « Encryption Required » dans client.conf"));
    else
        fail(status, httpStatus(status));
    return true;
}

bool CupsConnection::refused(ipp_t *answer)
{
    const auto status = ippGetStatusCode(answer);
    if (status <= IPP_STATUS_OK_EVENTS_COMPLETE)
        return false;
    auto *message = ippFindAttribute(answer, "status-message", IPP_TAG_TEXT);
    fail(status, message ? ippGetString(message, 0, nullptr) : ippErrorString(status));
    return true;
}

} // namespace Zelmar01
