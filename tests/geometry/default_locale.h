#pragma once

#include <QLocale>

/// Gives the process another default locale for a scope; the one before comes back at its end.
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

/// Locales that write numbers otherwise than C: a decimal comma, blanks between thousands, other digits.
inline const QLocale::Language otherLanguages[] = {QLocale::German, QLocale::Russian, QLocale::Arabic};
