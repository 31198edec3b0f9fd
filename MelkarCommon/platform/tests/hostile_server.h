#pragma once

#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/tests/print_server.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string_view>

/// The start of an answer, whose length follows.
inline const std::string kIppOk = "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\n";

/// One client of a `HostileServer`. Everything ends once the client hangs up or the server goes.
class HostileTalk {
public:
    HostileTalk(int socket, const std::atomic<bool>& isOver) : m_socket(socket), m_isOver(isOver) {}

    /// @return false once there is nobody to send to
    bool Send(std::string_view bytes) {
        while (!bytes.empty() && !m_isOver) {
            const ssize_t count = send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return !m_isOver;
    }
    /// Over and over, with pauses in between.
    void SendForEver(std::string_view bytes, std::chrono::milliseconds pause = std::chrono::milliseconds(0)) {
        while (Send(bytes))
            std::this_thread::sleep_for(pause);
    }
    void Answer(const std::string& message) {
        Send(kIppOk + "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n" + message);
    }
    /// Takes what comes until `end` is in it, or the client hangs up.
    void Take(std::string_view end) {
        std::string taken;
        while (taken.find(end) == std::string::npos) {
            taken.erase(0, taken.size() - std::min(taken.size(), end.size()));
            char block[65536];
            const ssize_t count = m_isOver ? 0 : recv(m_socket, block, sizeof block, 0);
            if (count <= 0)
                return;
            taken.append(block, static_cast<std::size_t>(count));
        }
    }
    bool TakeByte() {
        char byte = 0;
        return !m_isOver && recv(m_socket, &byte, 1, 0) == 1;
    }
    /// So that the client gets to read all that was said: with bytes of its own unread it would be cut off instead.
    void HangUp() {
        shutdown(m_socket, SHUT_WR);
        const timeval moment{0, 100'000}; // some clients keep the connection
        setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &moment, sizeof moment);
        Take("what nobody says");
    }

private:
    int m_socket;
    const std::atomic<bool>& m_isOver;
};

/// A print server on the loopback that does to its clients, one after the other, what it is told.
class HostileServer {
public:
    /// @param serve gets the number of the client, from 1, once the head of its request is taken
    explicit HostileServer(std::function<void(HostileTalk&, int)> serve) : m_serve(std::move(serve)) {
        listen(m_listener.socket, 8);
        m_thread = std::thread([this] { Run(); });
    }
    ~HostileServer() {
        m_isOver = true;
        shutdown(m_listener.socket, SHUT_RDWR);
        m_thread.join();
    }

    std::string Address(const char* scheme = "ipp") const {
        return std::string(scheme) + "://localhost:" + std::to_string(m_listener.port) + "/ipp/print";
    }
    int Clients() const { return m_clients; }

private:
    void Run() {
        for (;;) {
            const int client = accept(m_listener.socket, nullptr, nullptr);
            if (client < 0)
                return;
            const timeval second{1, 0}; // nobody waits longer for a client that does nothing
            setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &second, sizeof second);
            setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &second, sizeof second);
            HostileTalk talk(client, m_isOver);
            const int number = ++m_clients;
            talk.Take("\r\n\r\n"); // one that encrypts has none
            m_serve(talk, number);
            talk.HangUp();
            close(client);
        }
    }

    std::function<void(HostileTalk&, int)> m_serve;
    LoopbackSocket m_listener;
    std::atomic<bool> m_isOver{false};
    std::atomic<int> m_clients{0};
    std::thread m_thread;
};

/// Makes the bytes the document of a job.
inline void WriteDocument(melkar::PrintJob& job, const std::string& bytes) {
    const auto file = job.Document();
    EXPECT_TRUE(file != nullptr && file->Write(bytes.data(), bytes.size()) && file->Commit() == 0);
}

/// A value of a message, as bytes; without a name one more of the attribute before.
inline std::string IppValue(char tag, std::string_view name, std::string_view value) {
    const auto sized = [](std::string_view text) {
        return std::string{static_cast<char>(text.size() >> 8U), static_cast<char>(text.size())}.append(text);
    };
    return tag + sized(name) + sized(value);
}
inline std::string IppNumber(char tag, std::string_view name, char value) {
    return IppValue(tag, name, std::string("\0\0\0", 3) + value);
}

/// An answer with what stands in its groups.
inline std::string IppAnswerOf(int status, std::string_view groups = "") {
    return std::string{2, 0, static_cast<char>(status >> 8), static_cast<char>(status), 0, 0, 0, 1}.append(groups) +
           '\x03';
}
