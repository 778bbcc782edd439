#include "results.h"

#include <iostream>
#include <stdexcept>

namespace benchmarks {

namespace {

constexpr int repeats = 3;
constexpr double secondsForOneWay = 15;

/// One way of a case, with the best of its runs.
class Contender {
 public:
  explicit Contender(const std::function<Figures()>& run) : m_run(run) {}

  void runOnce(const std::string& what) {
    if (!m_run || m_spent > secondsForOneWay) return;
    const Figures figures = inChild(m_run);
    if (!figures.fine) throw std::runtime_error(what + ": a run failed");
    m_spent += figures.seconds;
    if (!m_best || figures.seconds < m_best->seconds) m_best = figures;
  }

  const std::optional<Figures>& best() const { return m_best; }

 private:
  const std::function<Figures()>& m_run;
  std::optional<Figures> m_best;
  double m_spent = 0;
};

}  // namespace

Row measure(const std::string& what, const Ways& ways) {
  std::cerr << what << " ...\n";
  Contender ours(ways.ours);
  Contender stock(ways.stock);
  Contender reference(ways.reference);
  for (int i = 0; i < repeats; ++i) {
    ours.runOnce(what);
    stock.runOnce(what + ", stock");
    reference.runOnce(what + ", reference");
  }
  Row row;
  row.what = what;
  row.ours = ours.best().value();
  row.stock = stock.best();
  row.reference = reference.best();
  return row;
}

const Row* Results::largest(const std::string& what, std::size_t back) const {
  for (auto row = m_rows.rbegin(); row != m_rows.rend(); ++row)
    if (row->what == what && back-- == 0) return &*row;
  return nullptr;
}

}  // namespace benchmarks
