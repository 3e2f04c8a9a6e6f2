#include "platform/forms/qt/Window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/Pixels.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/WideText.h"
#include "platform/forms/qt/WindowBorder.h"
#include "platform/forms/qt/WindowManager.h"
#include "platform/forms/qt/WindowNames.h"

namespace forms::qt {
namespace {

Qt::WindowFlags flagsOf(const FormDesign& design) {
  if (design.border == BorderStyle::None) {
    const auto kind = design.inTaskBar ? Qt::Window : Qt::Tool;
    return kind | Qt::FramelessWindowHint;
  }
  // For dialogs only, the toolkit tells the window manager which window they stay above.
  const auto kind = design.border == BorderStyle::FixedDialog ? Qt::Dialog : Qt::Window;
  Qt::WindowFlags flags = kind | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  if (design.minimiseBox) flags |= Qt::WindowMinimizeButtonHint;
  // Some window managers don't maximise a window without a maximise box, so it has one even where
  // the box does nothing.
  if (design.maximiseBox || design.startMaximised) flags |= Qt::WindowMaximizeButtonHint;
  return flags;
}

std::function<void()>& lastClosed() {
  static std::function<void()> call;
  return call;
}

}  // namespace

Window::Window(const FormDesign& design) : QWidget(nullptr, flagsOf(design)), design_(design) {
  setObjectName(QString::fromLatin1(design_.name));
  if (design_.border != BorderStyle::None) setWindowTitle(toQt(design_.caption));
  setAttribute(Qt::WA_QuitOnClose, false);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

bool Window::anyShown() {
  return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* window) {
    return dynamic_cast<const Window*>(window) != nullptr && window->isVisible();
  });
}

void Window::onLastClosed(std::function<void()> call) {
  lastClosed() = std::move(call);
}

void Window::addTimer(const char* name, int milliseconds, std::function<void()> tick) {
  auto* timer = new QTimer(this);
  timer->setObjectName(QString::fromLatin1(name));
  timer->setInterval(milliseconds);
  timer->setTimerType(Qt::PreciseTimer);
  timer->callOnTimeout(std::move(tick));
}

QSize Window::clientSize() const {
  return {toPixels(design_.width, scale_), toPixels(design_.height, scale_)};
}

/// The size that must fit on the desktop, in pixels at scale 1: all visible controls and, unless
/// the window starts maximised, its client area.
QSize Window::extent() const {
  QSize size;
  if (!design_.startMaximised) size = {toPixels(design_.width, 1), toPixels(design_.height, 1)};
  for (const WindowPart* part : parts_) {
    if (part->widget()->parentWidget() != this || !part->widget()->isVisibleTo(this)) continue;
    const QRect bounds = toPixels(part->bounds(), 1);
    size = size.expandedTo({bounds.right() + 1, bounds.bottom() + 1});
  }
  return size;
}

/// Reduces the scale if the screen doesn't fit into `room`, but never below one device pixel for 15
/// twips: at a pixel density of 1 the scale stays 1.
void Window::fit(QSize room) {
  double fitting = 1;
  const double density = devicePixelRatioF();
  if (density > 1) {
    const QSize need = extent();
    if (need.width() > room.width()) fitting = double(room.width()) / need.width();
    if (need.height() > room.height())
      fitting = std::min(fitting, double(room.height()) / need.height());
    fitting = std::max(fitting, 1 / density);
  }
  if (fitting == scale_) return;
  scale_ = fitting;
  for (WindowPart* part : parts_) part->layOut();
  if (!isMaximized()) fixSize();
}

void Window::fitDesktop() {
  QSize room = screen()->availableGeometry().size();
  if (design_.border != BorderStyle::None)
    room.rheight() -= style()->pixelMetric(QStyle::PM_TitleBarHeight);
  fit(room);
}

/// A window manager would not maximise a window of fixed size, so the size is fixed only while the
/// window isn't maximised.
void Window::fixSize() {
  if (design_.border == BorderStyle::Sizable || isMaximized()) {
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  } else {
    setFixedSize(clientSize());
  }
}

void Window::centre() {
  const QRect desktop = screen()->geometry();
  const int title =
      design_.border == BorderStyle::None ? 0 : style()->pixelMetric(QStyle::PM_TitleBarHeight);
  move(desktop.x() + (desktop.width() - width()) / 2,
       desktop.y() + (desktop.height() - height() - title) / 2);
}

void Window::showScreen() {
  orderTabs();
  nameWidgets(*this, scale_);
  fitDesktop();
  resize(clientSize());
  if (design_.restoredAt)
    setGeometry({screen()->geometry().topLeft() + toPixels(*design_.restoredAt, scale_), size()});
  if (!design_.startMaximised) fixSize();
  if (design_.position == StartPosition::CentreScreen) centre();
  winId();  // creates the native window that `windowHandle` returns
  if (!design_.inTaskBar) keepOutOfTaskBars(*windowHandle());
  connect(windowHandle(), &QWindow::screenChanged, this, [this] { fitDesktop(); });
  if (windowModality() != Qt::NonModal) {
    // Keeps the window above the one that it blocks.
    if (const QWidget* below = QApplication::activeWindow())
      windowHandle()->setTransientParent(below->windowHandle());
  }
  if (design_.startMaximised)
    showMaximized();
  else
    show();
  if (!hasWindowManager()) manageItself();
  for (QTimer* timer : findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) timer->start();
}

void Window::showScreenModal() {
  QEventLoop loop;
  const EndRegistration registration([&loop] { loop.quit(); });
  modalLoop_ = &loop;
  setWindowModality(Qt::ApplicationModal);
  showScreen();
  if (!process::hasEnded()) loop.exec();
  modalLoop_ = nullptr;
  hide();
  process::unwindIfEnding();
  // A slow window manager can leave the keyboard focus with a box that has closed.
  QWindow* below = windowHandle()->transientParent();
  if (below != nullptr && below->isVisible()) below->requestActivate();
}

/// Does what a window manager would do: maximises the window, and draws a border around a dialog.
void Window::manageItself() {
  if (isMaximized()) windowHandle()->setGeometry(screen()->availableGeometry());
  if (design_.border == BorderStyle::FixedDialog) new WindowBorder(this);
}

void Window::unload() {
  if (std::exchange(closed_, true)) return;
  for (QTimer* timer : findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) timer->stop();
  hide();
  if (modalLoop_ != nullptr) modalLoop_->quit();
  if (lastClosed() && !anyShown()) lastClosed()();
}

/// The tab order is the order of the tab indexes, across containers. The visible tab stop with the
/// lowest index gets the focus first.
void Window::orderTabs() {
  std::vector<WindowPart*> stops;
  std::ranges::copy_if(parts_, std::back_inserter(stops), [](const WindowPart* part) {
    return (part->widget()->focusPolicy() & Qt::TabFocus) != 0;
  });
  std::ranges::stable_sort(stops, {}, &WindowPart::tabIndex);
  for (std::size_t i = 1; i < stops.size(); ++i)
    setTabOrder(stops[i - 1]->widget(), stops[i]->widget());
  const auto first = std::ranges::find_if(
      stops, [this](const WindowPart* part) { return part->widget()->isVisibleTo(this); });
  if (first != stops.end()) (*first)->widget()->setFocus(Qt::TabFocusReason);
}

void Window::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), drawnColour(design_.backColour, palette()));
}

void Window::closeEvent(QCloseEvent* event) {
  // A window without border has no close box; only the screen itself closes it.
  if (design_.border == BorderStyle::None) {
    event->ignore();
    return;
  }
  unload();
  event->accept();
}

/// A screen that opens maximised and has no maximise box stays maximised. Window managers have ways
/// to restore it all the same, which would put a part of the screen out of reach.
bool Window::staysMaximised() const {
  return design_.startMaximised && !design_.maximiseBox;
}

void Window::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && !isMinimized()) {
    if (staysMaximised() && !isMaximized() && isVisible())
      setWindowState(windowState() | Qt::WindowMaximized);
    else
      fixSize();
  }
  QWidget::changeEvent(event);
}

void Window::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isMaximized()) fit(size());
}

}  // namespace forms::qt
