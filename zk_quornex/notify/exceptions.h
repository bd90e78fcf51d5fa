// The agent's exceptions. An exception object belongs to one thread at a time.
#ifndef ZK_NOTIFY_EXCEPTIONS_H
#define ZK_NOTIFY_EXCEPTIONS_H

#include <exception>
#include <sstream>

// A failure with a result code and up to four description texts that the
// thrower may write.
//
// The copy constructor takes its source by non-const reference because it hands
// the texts over: what is left to read in each of the source's streams moves
// into the copy, and a second copy of the same source gets empty texts. A
// stream of the copy whose source had nothing to read is in the failed state,
// as inserting an empty stream buffer leaves it; later writes into it are
// ignored.
//
// Defined here in whole: an agent catches and throws these classes without
// needing an exported symbol for them.
class ProcessException : public std::exception {
 public:
  ProcessException() = default;

  ProcessException(ProcessException& other)
      : std::exception(other), code_(other.code_), subCode_(other.subCode_) {
    text1_ << other.text1_.rdbuf();
    text2_ << other.text2_.rdbuf();
    text3_ << other.text3_.rdbuf();
    text4_ << other.text4_.rdbuf();
  }

  ~ProcessException() override = default;

  int code_ = 0;
  int subCode_ = 0;
  std::stringstream text1_;
  std::stringstream text2_;
  std::stringstream text3_;
  std::stringstream text4_;
};

// A service interface that the bundle manager was asked for is not registered;
// code_ is 0x41180004.
class InterfaceNotExistException : public ProcessException {
 public:
  InterfaceNotExistException() = default;
  InterfaceNotExistException(InterfaceNotExistException& other) = default;
  ~InterfaceNotExistException() override = default;
};

#endif
