#include "platform/forms/qt/Window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <chrono>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/Measures.h"
#include "platform/forms/qt/Text.h"
#include "platform/forms/qt/WindowNames.h"

namespace forms {
namespace {

Qt::WindowFlags flagsOf(const FormDesign& design) {
  if (design.border == BorderStyle::None) {
    const auto kind = design.inTaskBar ? Qt::Window : Qt::Tool;
    return kind | Qt::FramelessWindowHint;
  }
  // Only windows of the dialog kind are told to the desktop as standing above another one.
  const auto kind = design.border == BorderStyle::FixedDialog ? Qt::Dialog : Qt::Window;
  Qt::WindowFlags flags = kind | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  if (design.minimiseBox) flags |= Qt::WindowMinimizeButtonHint;
  if (design.maximiseBox) flags |= Qt::WindowMaximizeButtonHint;
  return flags;
}

}  // namespace

std::vector<Form*>& Form::Window::all() {
  static std::vector<Form*> screens;
  return screens;
}

bool Form::Window::anyShown() {
  return std::ranges::any_of(
      all(), [](const Form* screen) { return screen->window_ && screen->window_->isVisible(); });
}

Form::Window::Window(Form& screen, const FormDesign& stored)
    : QWidget(nullptr, flagsOf(stored)), form(screen), design(stored) {
  setObjectName(QString::fromLatin1(design.name));
  if (design.border != BorderStyle::None) setWindowTitle(qt::toQt(design.caption));
  setAttribute(Qt::WA_QuitOnClose, false);
  setAttribute(Qt::WA_OpaquePaintEvent);
  all().push_back(&form);
}

Form::Window::~Window() {
  std::erase(all(), &form);
}

void Form::Window::release(Form& screen) {
  for (QTimer* timer : screen.window_->timers) timer->stop();
  for (Control* control : screen.window_->controls) control->widget_ = nullptr;
  screen.window_.reset();
}

QSize Form::Window::clientSize() const {
  return {qt::toPixels(design.width, scale), qt::toPixels(design.height, scale)};
}

/// What must fit the desktop, in pixels at full scale: the visible controls, and the window itself
/// where it has its own size.
QSize Form::Window::extent() const {
  QSize size;
  if (!design.startMaximised)
    size = {qt::toPixels(design.width, 1), qt::toPixels(design.height, 1)};
  for (const Control* control : controls) {
    if (!control->visible_ || control->widget_->parentWidget() != this) continue;
    const QRect place =
        qt::toPixels(control->left_, control->top_, control->width_, control->height_, 1);
    size = size.expandedTo({place.right() + 1, place.bottom() + 1});
  }
  return size;
}

/// Lays the screen out smaller where it would not fit, on dense desktops alone: never under one
/// device pixel for 15 twips.
void Form::Window::fit(QSize room) {
  double fitting = 1;
  const double density = devicePixelRatioF();
  if (density > 1) {
    const QSize need = extent();
    if (need.width() > room.width()) fitting = double(room.width()) / need.width();
    if (need.height() > room.height())
      fitting = std::min(fitting, double(room.height()) / need.height());
    fitting = std::max(fitting, 1 / density);
  }
  if (fitting == scale) return;
  scale = fitting;
  for (Control* control : controls) {
    control->place();
    control->rescaled();
  }
  if (!isMaximized()) fixSize();
}

void Form::Window::fitDesktop() {
  QSize room = screen()->availableGeometry().size();
  if (design.border != BorderStyle::None)
    room.rheight() -= style()->pixelMetric(QStyle::PM_TitleBarHeight);
  fit(room);
}

/// A window of fixed size would not be maximised by a window manager, so the size is fixed only
/// while the window isn't maximised.
void Form::Window::fixSize() {
  if (design.border == BorderStyle::Sizable || isMaximized()) {
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  } else {
    setFixedSize(clientSize());
  }
}

void Form::Window::centre() {
  const QRect desktop = screen()->geometry();
  const int title =
      design.border == BorderStyle::None ? 0 : style()->pixelMetric(QStyle::PM_TitleBarHeight);
  move(desktop.x() + (desktop.width() - width()) / 2,
       desktop.y() + (desktop.height() - height() - title) / 2);
}

void Form::Window::appear() {
  orderTabs();
  qt::nameWidgets(*this, scale);
  fitDesktop();
  resize(clientSize());
  if (!design.startMaximised) fixSize();
  if (design.position == StartPosition::CentreScreen) centre();
  winId();
  connect(windowHandle(), &QWindow::screenChanged, this, [this] { fitDesktop(); });
  if (windowModality() != Qt::NonModal) {
    // Keeps the window above the one that it shuts out.
    if (const QWidget* below = QApplication::activeWindow())
      windowHandle()->setTransientParent(below->windowHandle());
  }
  if (design.startMaximised)
    showMaximized();
  else
    show();
  for (QTimer* timer : timers) timer->start();
}

/// On a display without a window manager nobody maximises a window, and nobody could enlarge it.
void Form::Window::fillUnmanagedDesktop() {
  if (isMaximized() && size() == clientSize())
    windowHandle()->setGeometry(screen()->availableGeometry());
}

void Form::Window::leave() {
  unloaded = true;
  for (QTimer* timer : timers) timer->stop();
  hide();
  if (modalLoop != nullptr) modalLoop->quit();
}

/// The tab order is the order of the tab indexes, across containers; the lowest visible tab stop
/// has the first focus.
void Form::Window::orderTabs() {
  std::vector<Control*> stops;
  std::ranges::copy_if(controls, std::back_inserter(stops), [](const Control* control) {
    return (control->widget_->focusPolicy() & Qt::TabFocus) != 0;
  });
  std::ranges::stable_sort(stops, {}, [](const Control* control) { return control->tabIndex_; });
  for (std::size_t i = 1; i < stops.size(); ++i)
    setTabOrder(stops[i - 1]->widget_, stops[i]->widget_);
  const auto first = std::ranges::find_if(
      stops, [this](const Control* control) { return control->widget_->isVisibleTo(this); });
  if (first != stops.end()) (*first)->widget_->setFocus(Qt::TabFocusReason);
}

void Form::Window::paintEvent(QPaintEvent* event) {
  if (!seen_ && design.startMaximised) {
    // A window manager maximises a window before it lets it be seen, or at once behind that.
    constexpr std::chrono::milliseconds kGrace{250};
    auto* const grace = new QTimer(this);
    grace->setSingleShot(true);
    connect(grace, &QTimer::timeout, this, &Window::fillUnmanagedDesktop);
    grace->start(kGrace);
  }
  seen_ = true;
  QPainter(this).fillRect(event->rect(), qt::drawnColour(design.backColour, palette()));
}

void Form::Window::closeEvent(QCloseEvent* event) {
  // A window without border has no close box; only the screen itself takes it away.
  if (design.border == BorderStyle::None) {
    event->ignore();
    return;
  }
  form.Unload();
  event->accept();
}

/// A screen that opens maximised and has no box for that stays so: window managers offer ways out
/// all the same, and the rest of such a screen could not be reached then.
bool Form::Window::staysMaximised() const {
  return design.startMaximised && !design.maximiseBox;
}

void Form::Window::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && !isMinimized()) {
    if (staysMaximised() && !isMaximized() && isVisible())
      setWindowState(windowState() | Qt::WindowMaximized);
    else
      fixSize();
  }
  QWidget::changeEvent(event);
}

void Form::Window::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isMaximized()) fit(size());
}

}  // namespace forms
