#include "benchmark_values.h"

#include <map>

#include "coordinates.h"
#include "qt_numbers.h"

namespace benchmarks {

namespace {

void fill(std::vector<double>& values, std::size_t count) {
  Coordinates coordinates;
  while (values.size() < count)
    // rounded to six digits, as in a file
    values.push_back(qtNumber(coordinates.next()).toDouble());
}

void fill(std::vector<std::uint32_t>& values, std::size_t count) {
  const std::size_t across = 1000;
  while (values.size() < count) {
    const std::size_t triple = values.size() / 3;
    for (const std::size_t corner : {triple, triple + 1, triple + across})
      values.push_back(static_cast<std::uint32_t>(corner));
  }
}

/// The value for a size, created on first use and cached.
template <typename Value, typename Make>
const Value& cached(std::size_t size, Make&& make) {
  static std::map<std::size_t, Value> values;
  const auto found = values.find(size);
  return found != values.end() ? found->second : values.emplace(size, make()).first->second;
}

}  // namespace

template <typename Number>
const std::vector<Number>& numbers(std::size_t triples) {
  return cached<std::vector<Number>>(triples, [&] {
    std::vector<Number> values;
    fill(values, 3 * triples);
    return values;
  });
}

const std::vector<double>& computedReals(std::size_t triples) {
  struct Computed {
    std::vector<double> values;
  };
  return cached<Computed>(triples,
                          [&] {
                            Computed computed{numbers<double>(triples)};
                            for (double& value : computed.values)
                              value *= 0.70710678118654752;  // rotated by 45 degrees
                            return computed;
                          })
      .values;
}

template <typename Number>
const QString& listString(std::size_t triples) {
  return cached<QString>(triples, [&] { return qtText(numbers<Number>(triples)); });
}

template <typename Number>
const std::string& listBytes(std::size_t triples) {
  return cached<std::string>(triples, [&] { return listString<Number>(triples).toStdString(); });
}

template <typename Number>
const QStringList& singleStrings(std::size_t triples) {
  return cached<QStringList>(triples, [&] {
    QStringList texts;
    for (const Number number : numbers<Number>(triples))
      texts += qtNumber(number);
    return texts;
  });
}

template <typename Number>
const std::vector<std::string>& singleBytes(std::size_t triples) {
  return cached<std::vector<std::string>>(triples, [&] {
    std::vector<std::string> texts;
    for (const QString& text : singleStrings<Number>(triples))
      texts.push_back(text.toStdString());
    return texts;
  });
}

#define INSTANTIATE(Number)                                         \
  template const std::vector<Number>& numbers<Number>(std::size_t); \
  template const QString& listString<Number>(std::size_t);          \
  template const std::string& listBytes<Number>(std::size_t);       \
  template const QStringList& singleStrings<Number>(std::size_t);   \
  template const std::vector<std::string>& singleBytes<Number>(std::size_t);
INSTANTIATE(double)
INSTANTIATE(std::uint32_t)
#undef INSTANTIATE

}  // namespace benchmarks
