#pragma once

#include <QHash>
#include <QString>

#include "vocabulary.h"

namespace ztcad {

/// Gives out names so that none occurs twice in one pass. The first bearer of a name keeps it, the next ones
/// get "_$1", "_$2", ... behind it. A new name is not compared with names that come later in the pass.
class NameCounter {
 public:
  /// `name` itself when it was not seen yet, else a new one made from it.
  QString unique(const QString& name) {
    const auto seen = m_next.find(name);
    if (seen == m_next.end()) {
      m_next.insert(name, 1);
      return name;
    }
    QString made = name + words().nameSeparator + QString::number(seen.value()++);
    m_next.insert(made, 1);
    return made;
  }

 private:
  QHash<QString, unsigned> m_next;  // by name: the counter that the next bearer gets
};

template <typename Element>
void renameDuplicate(Element& element, NameCounter& counter) {
  const QString name = element.name();
  const QString unique = counter.unique(name);
  if (unique != name) element.setName(unique);
}

template <typename Element>
void renameDuplicate(Element* element, NameCounter& counter) {
  renameDuplicate(*element, counter);
}

/// Renames the duplicates of one container of named elements, or of pointers to such (none of them null), in
/// its order.
template <typename Container>
void renameDuplicates(Container& elements, NameCounter& counter) {
  for (auto& element : elements)
    renameDuplicate(element, counter);
}

}  // namespace ztcad
