#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms/Container.h"
#include "platform/forms/Event.h"
#include "platform/forms/Measures.h"
#include "platform/forms/WindowPart.h"

namespace forms {

/// The base of all controls. A control never changes its container.
class Control : private WindowPart {
 public:
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  /// Index in the control array, 0 for a control outside of an array.
  std::int16_t Index() const { return index_; }

  /// Position and size in twips, within the container.
  Twips Left() const { return bounds_.left; }
  Twips Top() const { return bounds_.top; }
  Twips Width() const { return bounds_.width; }
  Twips Height() const { return bounds_.height; }
  void Left(Twips left);
  void Top(Twips top);
  void Height(Twips height);

  bool Visible() const { return visible_; }
  void Visible(bool visible);

 protected:
  /// `widget` is created by the derived class as a child of the container's widget; the control
  /// owns it.
  Control(Container& container, const Design& design, std::int16_t index, QWidget* widget);

  QWidget* widget() const final { return widget_; }
  qt::Window& screen() const { return screen_; }
  /// The scale at which the screen is laid out: 1 as designed, less where it would not fit on a
  /// desktop of high pixel density.
  double scale() const;
  /// Called after the screen's scale has changed and the widget has its new position. Adapts the
  /// widget's font; a control with other sizes that depend on the scale adapts them as well.
  virtual void rescaled();

 private:
  int tabIndex() const final { return tabIndex_; }
  const Bounds& bounds() const final { return bounds_; }
  void layOut() final;
  void setGeometry();

  std::string name_;
  std::int16_t index_;
  qt::Window& screen_;
  QWidget* widget_;
  Bounds bounds_;
  int tabIndex_;
  bool visible_;
  Font font_;
};

/// An indexed array of controls of one type. The elements live as long as the array.
template <class T>
class ControlArray {
 public:
  /// Creates `count` controls, the i-th from `design(i)`.
  template <class DesignOf>
  ControlArray(Container& container, std::int16_t count, DesignOf design) {
    elements_.reserve(count);
    for (std::int16_t i = 0; i < count; ++i)
      elements_.push_back(std::make_unique<T>(container, design(i), i));
  }

  T& operator()(std::int16_t index) { return *elements_.at(index); }
  const T& operator()(std::int16_t index) const { return *elements_.at(index); }
  std::int16_t count() const { return static_cast<std::int16_t>(elements_.size()); }
  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }

 private:
  std::vector<std::unique_ptr<T>> elements_;
};

}  // namespace forms
