#include "cli/failure.hpp"

#include <exception>
#include <new>
#include <system_error>

#include "core/errors.hpp"

namespace cli {

Told told_of_current_exception() {
  try {
    throw;
  } catch (const Failure& e) {
    return {e.code(), e.what()};
  } catch (const core::Error& e) {
    return {EXIT_FAILED, e.what()};
  } catch (const std::bad_alloc&) {
    return {EXIT_FAILED, "out of memory"};
  } catch (const std::exception&) {
    // Its message is not ours: it might quote the document.
    return {EXIT_FAILED, "unexpected failure"};
  }
}

std::string with_errno(const std::string& what, int error_number) {
  return what + ": " + std::generic_category().message(error_number);
}

}  // namespace cli
