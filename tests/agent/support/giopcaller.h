// A client that writes its messages byte by byte: it comes from whatever address
// of the loopback network it likes, and calls any object whose key it knows.
#ifndef ZK_TESTS_AGENT_SUPPORT_GIOPCALLER_H
#define ZK_TESTS_AGENT_SUPPORT_GIOPCALLER_H

#include <cstdint>
#include <string>

namespace zk::test {

// What the agent answered.
struct GiopAnswer {
  enum class Status : std::uint32_t { DONE, USER_EXCEPTION, SYSTEM_EXCEPTION, CLOSED = 99 };
  Status status = Status::CLOSED;  // CLOSED: nothing came, and the connection is over
  std::string exception;           // its repository id
  std::string body;                // of an answer, without the header

  // "done", the exception's name, or "closed".
  std::string text() const;
};

// The object key in a stringified reference of this process's byte order.
std::string keyIn(const std::string& ior);

class GiopCaller {
 public:
  // Connects to the port of 127.0.0.1. Throws std::runtime_error.
  explicit GiopCaller(unsigned short port, const std::string& from = "127.0.0.1");
  ~GiopCaller();
  GiopCaller(const GiopCaller&) = delete;
  GiopCaller& operator=(const GiopCaller&) = delete;

  // parameters are marshalled already.
  GiopAnswer call(const std::string& key, const std::string& operation,
                  const std::string& parameters = "");

  // getEmsSession; ior refers to the NMS's half. The answer's body is the session's
  // reference.
  GiopAnswer logIn(const std::string& user, const std::string& password, const std::string& ior);

 private:
  GiopAnswer readReply() const;
  std::string read(std::size_t size) const;

  const int socket_;
  std::uint32_t lastId_ = 0;
};

// The object key in a reference as an answer's body holds it.
std::string keyInBody(const std::string& body);

}  // namespace zk::test

#endif
