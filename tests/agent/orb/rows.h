// Tables of requests, and what is to become of each, in every form.
#ifndef ZK_TESTS_AGENT_ORB_ROWS_H
#define ZK_TESTS_AGENT_ORB_ROWS_H

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "agent/orb/screening.h"
#include "tests/agent/orb/decoding.h"
#include "tests/agent/orb/messages.h"

namespace zk::agent {

inline std::ostream& operator<<(std::ostream& out, Verdict verdict) {
  return out << (verdict == Verdict::PASS        ? "PASS"
                 : verdict == Verdict::BAD_PARAM ? "BAD_PARAM"
                                                 : "MARSHAL");
}

}  // namespace zk::agent

namespace zk::test {

struct Row {
  const char* what;
  const char* operation;
  Parameters parameters;
};

// Leaves of the message what the ORB would read.
inline agent::Verdict screened(std::string& message) {
  const auto request = agent::readRequest(message);
  EXPECT_TRUE(request);
  return request ? agent::screen(message, *request) : agent::Verdict::MARSHAL;
}

inline agent::Verdict verdictOn(std::string message) { return screened(message); }

inline void expectVerdicts(const std::vector<Row>& rows, agent::Verdict verdict) {
  for (const Form& form : forms()) {
    for (const Row& row : rows) {
      EXPECT_EQ(verdictOn(messageOf(form, row.operation, row.parameters)), verdict)
          << row.what << ", " << form;
    }
  }
}

// But where mayPass says so of a row, cut to this many bytes.
inline void expectNothingCutPasses(
    const std::vector<Row>& rows,
    const std::function<bool(const Row&, std::size_t)>& mayPass = {}) {
  for (const Form& form : forms()) {
    for (const Row& row : rows) {
      const std::string message = messageOf(form, row.operation, row.parameters);
      const std::size_t begin = agent::readRequest(message)->parametersAt;
      const std::size_t step = message.size() > 2000 ? 97 : 1;
      for (std::size_t size = begin; size < message.size(); size += step) {
        EXPECT_TRUE(verdictOn(resized(message.substr(0, size))) != agent::Verdict::PASS ||
                    (mayPass && mayPass(row, size - begin)))
            << row.what << ", " << size << ", " << form;
      }
    }
  }
}

// Changes every byte of the parameters. The ORB must survive what then passes.
inline void changeEveryByte(const std::string& message) {
  const std::size_t begin = agent::readRequest(message)->parametersAt;
  for (std::size_t at = begin; at < message.size(); ++at) {
    for (const int value : {0, 1, 2, 0x7f, 0x80, 0xff, message[at] + 1, message[at] - 1}) {
      std::string changed = message;
      changed[at] = static_cast<char>(value);
      if (screened(changed) == agent::Verdict::PASS) {
        const auto request = agent::readRequest(changed);
        ASSERT_TRUE(request);
        decodedByOrb(changed, *request);
      }
    }
  }
}

inline void changeEveryByte(const std::vector<Row>& rows) {
  for (const Form& form : forms()) {
    for (const Row& row : rows) {
      const std::string message = messageOf(form, row.operation, row.parameters);
      if (message.size() < 500) {
        changeEveryByte(message);
      }
    }
  }
}

}  // namespace zk::test

#endif
