#include "late_part.h"

namespace {

class Part {
 public:
  Part() = default;
  ~Part() {
    if (m_call) m_call();
  }
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

  void setCall(void (*call)()) { m_call = call; }

 private:
  void (*m_call)() = nullptr;
};

Part part;

}  // namespace

void callOnDestruction(void (*call)()) { part.setCall(call); }
