#include "results.h"

#include <iostream>
#include <stdexcept>

namespace benchmarks {

namespace {

constexpr int repeats = 3;
constexpr double secondsPerImplementation = 15;

/// One implementation of a case, with the best of its runs.
class Contender {
 public:
  explicit Contender(const std::function<Measurement()>& run) : m_run(run) {}

  void runOnce(const std::string& name) {
    if (!m_run || m_spent > secondsPerImplementation) return;
    const Measurement measurement = inChild(m_run);
    if (!measurement.succeeded) throw std::runtime_error(name + ": a run failed");
    m_spent += measurement.seconds;
    if (!m_best || measurement.seconds < m_best->seconds) m_best = measurement;
  }

  const std::optional<Measurement>& best() const { return m_best; }

 private:
  const std::function<Measurement()>& m_run;
  std::optional<Measurement> m_best;
  double m_spent = 0;
};

}  // namespace

Row measure(const std::string& name, const Implementations& implementations) {
  std::cerr << name << " ...\n";
  Contender library(implementations.library);
  Contender qt(implementations.qt);
  Contender reference(implementations.reference);
  for (int i = 0; i < repeats; ++i) {
    library.runOnce(name + ", library");
    qt.runOnce(name + ", Qt");
    reference.runOnce(name + ", reference");
  }
  Row row;
  row.name = name;
  row.library = library.best().value();
  row.qt = qt.best();
  row.reference = reference.best();
  return row;
}

const Row* Results::largest(const std::string& name, std::size_t rank) const {
  for (auto row = m_rows.rbegin(); row != m_rows.rend(); ++row)
    if (row->name == name && rank-- == 0) return &*row;
  return nullptr;
}

}  // namespace benchmarks
