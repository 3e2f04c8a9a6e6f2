#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms/Event.h"
#include "platform/forms/Measures.h"

class QWidget;

namespace forms {

class Form;
class Container;
class Timer;

/// What all controls have. A control belongs to its container for its whole life.
class Control {
 public:
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  /// Place in the control array, 0 for a control that stands alone.
  std::int16_t Index() const { return index_; }

  /// Position and size in twips, within the container.
  Twips Left() const { return left_; }
  Twips Top() const { return top_; }
  Twips Width() const { return width_; }
  Twips Height() const { return height_; }
  void Left(Twips left);
  void Top(Twips top);
  void Height(Twips height);

  bool Visible() const { return visible_; }
  void Visible(bool visible);

 protected:
  /// `widget` is made by the derived class as a child of the container's widget (`clientOf`); the
  /// control owns it.
  Control(Container& container, const Design& design, std::int16_t index, QWidget* widget);

  /// The widget that a container's controls are made in.
  static QWidget* clientOf(Container& container);
  static Colour backColourOf(const Container& container);
  QWidget* widget() const { return widget_; }
  Form& screen() const { return screen_; }
  /// How large the screen is laid out: 1 as designed, less where it would not fit a dense desktop.
  double scale() const;
  /// Called when the screen's scale has changed and the widget stands at its new place. Adapts the
  /// widget's font; a control with measures of its own adapts them as well.
  virtual void rescaled();

 private:
  friend class Form;
  void place();

  std::string name_;
  std::int16_t index_;
  Container& container_;
  Form& screen_;
  QWidget* widget_;
  Twips left_, top_, width_, height_;
  int tabIndex_;
  bool visible_;
  Font font_;
};

/// What can hold controls: a screen, a picture box, a frame.
class Container {
 public:
  virtual ~Container() = default;

 protected:
  friend class Control;
  friend class Form;
  friend class Timer;
  /// The widget that children are made in; made by the derived class.
  virtual QWidget* client() const = 0;
  virtual Form& form() = 0;
  /// What stands behind a transparent control.
  virtual Colour backColour() const = 0;
};

/// An indexed array of like controls. The elements live as long as the array.
template <class T>
class ControlArray {
 public:
  /// `count` controls, the i-th made from `design(i)`.
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
