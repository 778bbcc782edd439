#pragma once

#include <cstdint>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

namespace benchmarks {

/// Input of the component benchmarks: the numbers of a seeded mesh, and their text in every form that an
/// implementation takes. Each value is created on first use and kept.

template <typename Number>
const std::vector<Number>& numbers(std::size_t triples);

/// Reals as a program computes them: up to seventeen digits, where a file holds six.
const std::vector<double>& computedReals(std::size_t triples);

/// The storage text of a list, as bytes and as a QString.
template <typename Number>
const std::string& listBytes(std::size_t triples);
template <typename Number>
const QString& listString(std::size_t triples);

/// The text of each number on its own.
template <typename Number>
const std::vector<std::string>& singleBytes(std::size_t triples);
template <typename Number>
const QStringList& singleStrings(std::size_t triples);

}  // namespace benchmarks
