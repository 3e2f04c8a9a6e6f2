#include "support/WindowDriver.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QListView>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <cstdio>
#include <cstdlib>

namespace support {
namespace {

QString toQt(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QString toQt(std::string_view name) {
  return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

[[noreturn]] void missing(std::string_view what) {
  std::fprintf(stderr, "The user finds no \"%.*s\" on the screen.\n", static_cast<int>(what.size()),
               what.data());
  std::abort();
}

/// After each release QTest sets its clock forward, so that the next click isn't a double click.
/// This undoes it.
void forgetPause() {
  QTest::lastMouseTimestamp -= QTest::mouseDoubleClickInterval;
}

QWidget* shownScreen(std::string_view name) {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && window->objectName() == toQt(name)) return window;
  return nullptr;
}

}  // namespace

WindowDriver::WindowDriver(std::string_view screen) : window_(shownScreen(screen)) {
  settle();
  if (window_ == nullptr) missing(screen);
}

bool WindowDriver::isShown(std::string_view screen) {
  return shownScreen(screen) != nullptr;
}

QWidget& WindowDriver::control(std::string_view name) const {
  auto* found = window_->findChild<QWidget*>(toQt(name));
  if (found == nullptr) missing(name);
  return *found;
}

bool WindowDriver::isVisible(std::string_view name) const {
  return control(name).isVisible();
}

bool WindowDriver::hasFocus(std::string_view name) const {
  return control(name).hasFocus();
}

QPoint WindowDriver::centre(std::string_view name) const {
  const QWidget& widget = control(name);
  return widget.mapTo(window_, widget.rect().center());
}

void WindowDriver::click(std::string_view name) {
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, centre(name));
  settle();
}

void WindowDriver::doubleClick(std::string_view name) {
  QTest::mouseDClick(window_->windowHandle(), Qt::LeftButton, {}, centre(name));
  settle();
}

void WindowDriver::clickAgain(std::string_view name) {
  forgetPause();
  click(name);
}

void WindowDriver::press(std::string_view name) {
  QTest::mousePress(window_->windowHandle(), Qt::LeftButton, {}, centre(name));
  settle();
}

void WindowDriver::release(std::string_view name) {
  QTest::mouseRelease(window_->windowHandle(), Qt::LeftButton, {}, centre(name));
  settle();
}

void WindowDriver::moveTo(std::string_view name) {
  QTest::mouseMove(window_->windowHandle(), centre(name));
  settle();
}

void WindowDriver::focus(std::string_view name) {
  control(name).setFocus(Qt::TabFocusReason);
  settle();
}

void WindowDriver::type(std::u16string_view text) {
  for (const QChar character : toQt(text))
    QTest::sendKeyEvent(QTest::Click, window_->windowHandle(), Qt::Key_unknown, character,
                        Qt::NoModifier);
  settle();
}

void WindowDriver::key(int key) {
  QTest::keyClick(window_->windowHandle(), static_cast<Qt::Key>(key));
  settle();
}

void WindowDriver::tab() {
  key(Qt::Key_Tab);
}

void WindowDriver::close() {
  window_->windowHandle()->close();
  settle();
}

void WindowDriver::pick(std::string_view comboBox, int entry) {
  click(comboBox);
  QAbstractItemView* list = static_cast<QComboBox&>(control(comboBox)).view();
  const QModelIndex row = list->model()->index(entry, 0);
  list->scrollTo(row);
  const QPoint at = list->visualRect(row).center();
  QWidget* popup = list->window();
  QTest::mouseMove(popup->windowHandle(), list->viewport()->mapTo(popup, at));
  QTest::mouseClick(popup->windowHandle(), Qt::LeftButton, {}, list->viewport()->mapTo(popup, at));
  settle();
}

std::vector<std::u16string> WindowDriver::entries(std::string_view listOrComboBox) const {
  settle();
  QWidget& widget = control(listOrComboBox);
  const auto* box = qobject_cast<QComboBox*>(&widget);
  const QAbstractItemModel* model =
      box != nullptr ? box->model() : static_cast<QListView&>(widget).model();
  std::vector<std::u16string> texts;
  for (int row = 0; row < model->rowCount(); ++row)
    texts.push_back(model->index(row, 0).data().toString().toStdU16String());
  return texts;
}

QPoint WindowDriver::rowPoint(std::string_view list, int row) const {
  auto& view = static_cast<QListView&>(control(list));
  const QModelIndex index = view.model()->index(row, 0);
  QPoint at(10, view.viewport()->height() - 3);
  if (index.isValid()) {
    view.scrollTo(index);
    at.setY(view.visualRect(index).center().y());
  }
  return view.viewport()->mapTo(window_, at);
}

void WindowDriver::clickRow(std::string_view list, int row, bool rightButton) {
  const Qt::MouseButton button = rightButton ? Qt::RightButton : Qt::LeftButton;
  const QPoint at = rowPoint(list, row);
  // A press may start a drag, which goes on until the release.
  soon([this, button, at] { QTest::mouseRelease(window_->windowHandle(), button, {}, at); });
  QTest::mousePress(window_->windowHandle(), button, {}, at);
  settle();
}

void WindowDriver::doubleClickRow(std::string_view list, int row) {
  clickRow(list, row);
  forgetPause();
  clickRow(list, row);
}

bool WindowDriver::drop(std::string_view name, std::u16string_view text) {
  QMimeData data;
  data.setText(text.empty() ? QStringLiteral("") : toQt(text));
  return drop(name, data, Qt::MoveAction);
}

bool WindowDriver::drop(std::string_view name, const QMimeData& data, int offeredActions) {
  QWidget& target = control(name);
  if (!target.acceptDrops()) return false;
  const auto offered = Qt::DropActions(offeredActions);
  const QPoint at = target.rect().center();
  QDragEnterEvent enter(at, offered, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &enter);
  if (!enter.isAccepted()) return false;
  QDragMoveEvent move(at, offered, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &move);
  QDropEvent dropped(at, offered, &data, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &dropped);
  settle();
  return dropped.isAccepted();
}

void settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool waitUntil(const std::function<bool()>& condition, int milliseconds) {
  return QTest::qWaitFor(condition, milliseconds);
}

void soon(std::function<void()> act, int milliseconds) {
  QTimer::singleShot(milliseconds, std::move(act));
}

}  // namespace support
