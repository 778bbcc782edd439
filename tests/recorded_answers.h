#pragma once

#include <gtest/gtest.h>
#include <cstdlib>
#include <fstream>
#include <map>
#include <QtGlobal>
#include <string>
#include <vector>

#include "differential/dice.h"
#include "random_seed.h"
#include "sum.h"

// What is well-formed, what a number is and how a text is printed is defined by Qt 5.15, for every build of
// the library. A build with Qt 5.15 compares the library's answers with Qt's and with records in
// tests/qt5_answers; a build with another Qt compares them with the records.
//
// After an intended change, a build with Qt 5.15 rewrites the records:
//
//     ZTCAD_REFRESH_ANSWERS=1 ./dev test release
//
// Review the difference like any other change before committing it.

/// Whether Qt itself can be asked: the tests are built with Qt 5.15.
constexpr bool qtIsTheReference = QT_VERSION < QT_VERSION_CHECK(6, 0, 0);

/// The record of one test suite: a file of lines, each a question and its answer.
class RecordedAnswers {
 public:
  explicit RecordedAnswers(const std::string& name)
      : m_fileName(std::string(ZTCAD_TEST_QT5_ANSWERS) + '/' + name + ".txt") {
    std::ifstream file(m_fileName, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
      const std::size_t tab = line.find('\t');
      if (tab != std::string::npos) m_recorded.emplace(line.substr(0, tab), line.substr(tab + 1));
    }
  }
  RecordedAnswers(const RecordedAnswers&) = delete;
  RecordedAnswers& operator=(const RecordedAnswers&) = delete;

  /// Checks the answer of the library, which a build with Qt 5.15 has compared with Qt's own.
  void expect(const std::string& asked, const std::string& answer) {
    const std::string question = onOneLine(asked);
    const std::string line = onOneLine(answer);
    EXPECT_TRUE(m_asked.emplace(question, line).second) << "asked twice: " << question;
    if (refreshes()) return;
    const auto recorded = m_recorded.find(question);
    if (recorded == m_recorded.end()) {
      ADD_FAILURE() << m_fileName << " has no answer to \"" << question << "\"; it is now: " << line;
    } else {
      EXPECT_EQ(line, recorded->second) << m_fileName << ", " << question;
    }
  }

  std::vector<std::string> questions() const {
    std::vector<std::string> all;
    for (const auto& entry : m_recorded)
      all.push_back(entry.first);
    return all;
  }

  /// To be called at the end: every recorded question was asked. Writes the record if it is to be refreshed.
  void finish() const {
    if (!refreshes()) {
      EXPECT_EQ(m_asked.size(), m_recorded.size()) << m_fileName << " has answers to other questions";
    } else if (qtIsTheReference && !testing::Test::HasFailure()) {
      std::ofstream file(m_fileName, std::ios::binary);
      for (const auto& [question, answer] : m_asked)
        file << question << '\t' << answer << '\n';
      EXPECT_TRUE(file.flush().good()) << m_fileName;
    } else {
      ADD_FAILURE() << m_fileName << " is not refreshed: only a build with Qt 5.15 does, if nothing fails";
    }
  }

 private:
  static bool refreshes() { return std::getenv("ZTCAD_REFRESH_ANSWERS") != nullptr; }

  static std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
      if (c == '\n') {
        line += "\\n";
      } else if (c == '\r') {
        line += "\\r";
      } else {
        line += c;
      }
    }
    return line;
  }

  const std::string m_fileName;
  std::map<std::string, std::string> m_recorded;
  std::map<std::string, std::string> m_asked;
};

/// A number as a question, so that questions sort like numbers.
inline std::string numbered(const std::string& what, int number) {
  const std::string digits = std::to_string(number);
  return what + ' ' + std::string(digits.size() < 5 ? 5 - digits.size() : 0, '0') + digits;
}

/// Checks random inputs: with Qt 5.15, fresh ones; in every build, fixed ones, whose answers are recorded as
/// sums of a hundred.
///
/// @param check makes an input by means of the dice, compares the library's answer with that of Qt if
///              `qtIsTheReference`, and returns it
/// @return the number of inputs
template <typename Check>
int checkRandomInputs(const std::string& record, int rounds, Check&& check) {
  int inputs = 0;
  if (qtIsTheReference) {
    Dice dice(randomSeed());
    for (; inputs < rounds && !testing::Test::HasFailure(); ++inputs)
      check(dice);
    EXPECT_FALSE(testing::Test::HasFailure()) << "input " << inputs - 1;
  }
  constexpr int sums = 40;
  constexpr int inputsPerSum = 100;
  RecordedAnswers recorded(record);
  Dice dice(1);
  for (int i = 0; i < sums && !testing::Test::HasFailure(); ++i) {
    Sum sum;
    for (int input = 0; input < inputsPerSum; ++input)
      sum.add(check(dice));
    recorded.expect(numbered("inputs", i), sum.text());
    inputs += inputsPerSum;
  }
  recorded.finish();
  return inputs;
}

/// Checks all 65,536 UTF-16 units; the answers are recorded as sums of 256.
/// @param check compares the answer for a unit as above, and returns it
template <typename Check>
void checkEveryUnit(const std::string& record, Check&& check) {
  RecordedAnswers recorded(record);
  for (int first = 0; first < 0x10000 && !testing::Test::HasFailure(); first += 0x100) {
    Sum sum;
    for (int unit = first; unit < first + 0x100; ++unit)
      sum.add(check(unit));
    recorded.expect(numbered("units from", first), sum.text());
  }
  recorded.finish();
}
