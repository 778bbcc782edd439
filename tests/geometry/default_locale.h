#pragma once

#include <QLocale>

/// Changes the default locale of the process within a scope and restores the previous one at its end.
class DefaultLocale {
 public:
  explicit DefaultLocale(const QLocale& locale) { QLocale::setDefault(locale); }
  ~DefaultLocale() { QLocale::setDefault(m_previous); }
  DefaultLocale(const DefaultLocale&) = delete;
  DefaultLocale& operator=(const DefaultLocale&) = delete;

  static bool isC() { return QLocale() == QLocale(QLocale::C, QLocale::AnyCountry); }

 private:
  const QLocale m_previous;  // a copy of the default
};

/// Locales with number formats unlike C: a decimal comma, spaces between thousands, other digits.
inline const QLocale::Language otherLanguages[] = {QLocale::German, QLocale::Russian, QLocale::Arabic};
