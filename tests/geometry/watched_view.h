#pragma once

#include <cstdint>
#include <optional>
#include <QString>
#include <set>
#include <stdexcept>

#include "xml/element_view.h"
#include "support/parallel_settings.h"

/// What a reader asked of an element: the calls, and the parallel modes that held at the time. The call that is named
/// in `failing` throws, as a carrier does that finds its bytes broken half-way.
struct ReadWatch {
  enum class Call { None, Attribute, Tag, Text, Children };

  Call failing = Call::None;
  std::set<Call> calls;
  std::set<std::int32_t> modes;

  void see(Call call) {
    calls.insert(call);
    modes.insert(ztcad::parallelSettings().mode);
    if (call == failing) throw std::runtime_error("the carrier broke");
  }
};

/// An element as another view shows it, with each call reported to the watch; its children are watched too.
class WatchedView final : public ztcad::ElementView {
 public:
  WatchedView(const ztcad::ElementView& inner, ReadWatch& watch) : m_inner(inner), m_watch(watch) {}

  QString tag() const override {
    m_watch.see(ReadWatch::Call::Tag);
    return m_inner.tag();
  }
  std::optional<QString> attribute(const QString& name) const override {
    m_watch.see(ReadWatch::Call::Attribute);
    return m_inner.attribute(name);
  }
  ztcad::ElementText text() const override {
    m_watch.see(ReadWatch::Call::Text);
    return m_inner.text();
  }
  void forEachChild(const ChildVisitor& visit) const override {
    m_watch.see(ReadWatch::Call::Children);
    m_inner.forEachChild([&](const ElementView& child) { visit(WatchedView(child, m_watch)); });
  }

 private:
  const ztcad::ElementView& m_inner;
  ReadWatch& m_watch;
};
