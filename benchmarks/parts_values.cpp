#include "parts_values.h"

#include <map>

#include "coordinates.h"
#include "stock_numbers.h"

namespace benchmarks {

namespace {

void fill(std::vector<double>& values, std::size_t count) {
  Coordinates coordinates;
  while (values.size() < count)
    // as a file gives them: six digits and no more
    values.push_back(stockNumber(coordinates.next()).toDouble());
}

void fill(std::vector<std::uint32_t>& values, std::size_t count) {
  const std::size_t across = 1000;
  while (values.size() < count) {
    const std::size_t triple = values.size() / 3;
    for (const std::size_t corner : {triple, triple + 1, triple + across})
      values.push_back(static_cast<std::uint32_t>(corner));
  }
}

/// One value for each size, made when it is first asked for and kept.
template <typename Value, typename Make>
const Value& kept(std::size_t size, Make&& make) {
  static std::map<std::size_t, Value> values;
  const auto found = values.find(size);
  return found != values.end() ? found->second : values.emplace(size, make()).first->second;
}

}  // namespace

template <typename Number>
const std::vector<Number>& numbers(std::size_t triples) {
  return kept<std::vector<Number>>(triples, [&] {
    std::vector<Number> made;
    fill(made, 3 * triples);
    return made;
  });
}

const std::vector<double>& computedReals(std::size_t triples) {
  struct Computed {
    std::vector<double> values;
  };
  return kept<Computed>(triples,
                        [&] {
                          Computed made{numbers<double>(triples)};
                          for (double& value : made.values)
                            value *= 0.70710678118654752;  // turned by 45 degrees
                          return made;
                        })
      .values;
}

template <typename Number>
const QString& listString(std::size_t triples) {
  return kept<QString>(triples, [&] { return stockText(numbers<Number>(triples)); });
}

template <typename Number>
const std::string& listBytes(std::size_t triples) {
  return kept<std::string>(triples, [&] { return listString<Number>(triples).toStdString(); });
}

template <typename Number>
const QStringList& singleStrings(std::size_t triples) {
  return kept<QStringList>(triples, [&] {
    QStringList made;
    for (const Number number : numbers<Number>(triples))
      made += stockNumber(number);
    return made;
  });
}

template <typename Number>
const std::vector<std::string>& singleBytes(std::size_t triples) {
  return kept<std::vector<std::string>>(triples, [&] {
    std::vector<std::string> made;
    for (const QString& text : singleStrings<Number>(triples))
      made.push_back(text.toStdString());
    return made;
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
