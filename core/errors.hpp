// The errors that veildoc throws on purpose.
//
// what() is the text that callers see. A message names the thing and the
// position that is wrong; it never quotes the document.
#pragma once

#include <stdexcept>

namespace core {

// Base of every error below, so that one handler can catch them all.
class Error : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A value of the wrong kind, such as bytes where text is expected.
class TypeError : public Error {
  using Error::Error;
};

// The right kind of value, but one that cannot be used, such as a score that is NaN.
class ValueError : public Error {
  using Error::Error;
};

// A pattern that does not compile, or that gave up on a text.
class RegexError : public Error {
  using Error::Error;
};

// A file, a service or another thing outside the process failed.
class ExternalError : public Error {
  using Error::Error;
};

}  // namespace core
