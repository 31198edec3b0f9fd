#pragma once

#include <MelkarCommon/platform/tests/print_server.h>

#include <functional>

/// A printer on the loopback that says so many times that it is there; of the next request it takes the first pieces,
/// and hangs up.
class FaultyPrinter {
public:
    /// @param beforeHangingUp runs on the printer's thread
    explicit FaultyPrinter(
        int answers, std::function<void()> beforeHangingUp = [] {})
        : m_answers(answers), m_beforeHangingUp(std::move(beforeHangingUp)) {
        listen(m_listener.socket, 8);
        m_server = std::thread([this] { Serve(); });
    }
    ~FaultyPrinter() {
        shutdown(m_listener.socket, SHUT_RDWR);
        m_server.join();
    }

    std::string Address() const { return "ipp://127.0.0.1:" + std::to_string(m_listener.port) + "/ipp/print"; }

private:
    void Serve() {
        while (http_t* client = httpAcceptConnection(m_listener.socket, 1)) {
            char resource[HTTP_MAX_URI];
            while (httpReadRequest(client, resource, sizeof resource) == HTTP_STATE_WAITING ||
                   httpUpdate(client) == HTTP_STATUS_CONTINUE) {
            }
            httpWriteResponse(client, HTTP_STATUS_CONTINUE);
            ipp_t* request = ippNew();
            ippRead(client, request);
            if (m_answers-- > 0)
                Answer(client, request);
            else
                m_beforeHangingUp();
            ippDelete(request);
            httpClose(client);
        }
    }

    static void Answer(http_t* client, ipp_t* request) {
        ipp_t* answer = ippNewResponse(request);
        httpClearFields(client);
        httpSetLength(client, ippLength(answer));
        httpWriteResponse(client, HTTP_STATUS_OK);
        ippWrite(client, answer);
        httpFlushWrite(client);
        ippDelete(answer);
    }

    int m_answers;
    std::function<void()> m_beforeHangingUp;
    LoopbackSocket m_listener;
    std::thread m_server;
};
