#include "swallowed_exception.h"

#include <exception>
#include <new>

#include "assertion_log.h"

namespace ztcad {

void reportSwallowedException(const char* function, unsigned line) noexcept {
  const auto report = [=](const char* what) { ztBaseAsserter::instance().report(what, function, line); };
  try {
    throw;
  } catch (const std::bad_alloc&) {
    if (ztBaseAsserter::hasWriter()) report("out of memory");
  } catch (const std::exception& exception) {
    report(exception.what());
  } catch (...) {
    report("unknown exception");
  }
}

}  // namespace ztcad
