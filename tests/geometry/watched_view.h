#pragma once

#include <cstdint>
#include <optional>
#include <QString>
#include <set>
#include <stdexcept>

#include "support/parallel_settings.h"
#include "xml/element_view.h"

/// Records the calls of a reader and the parallel modes at the time of the calls. The call named by `failing`
/// throws, as a view does that finds its input broken midway.
struct ReadWatch {
  enum class Call { None, Attribute, Tag, Text, Children };

  Call failing = Call::None;
  std::set<Call> calls;
  std::set<std::int32_t> modes;

  void record(Call call) {
    calls.insert(call);
    modes.insert(ztcad::parallelSettings().mode);
    if (call == failing) throw std::runtime_error("the view failed");
  }
};

/// Forwards to another view and records each call; its children are watched too.
class WatchedView final : public ztcad::ElementView {
 public:
  WatchedView(const ztcad::ElementView& inner, ReadWatch& watch) : m_inner(inner), m_watch(watch) {}

  const QString& tag() const override {
    m_watch.record(ReadWatch::Call::Tag);
    return m_inner.tag();
  }
  std::optional<QString> attribute(const QString& name) const override {
    m_watch.record(ReadWatch::Call::Attribute);
    return m_inner.attribute(name);
  }
  ztcad::ElementText text() const override {
    m_watch.record(ReadWatch::Call::Text);
    return m_inner.text();
  }
  void forEachChild(const ChildVisitor& visit) const override {
    m_watch.record(ReadWatch::Call::Children);
    m_inner.forEachChild([&](const ElementView& child) { visit(WatchedView(child, m_watch)); });
  }

 private:
  const ztcad::ElementView& m_inner;
  ReadWatch& m_watch;
};
