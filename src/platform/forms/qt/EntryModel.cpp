#include "platform/forms/qt/EntryModel.h"

#include <QCoreApplication>
#include <QEvent>

#include "platform/forms/qt/WideText.h"

namespace forms::qt {

void EntryModel::clear() {
  beginResetModel();
  texts_.clear();
  ends_.clear();
  published_ = 0;
  endResetModel();
}

void EntryModel::add(std::u16string_view entry) {
  texts_ += entry;
  ends_.push_back(texts_.size());
  if (posted_) return;
  posted_ = true;
  QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void EntryModel::publish() {
  if (published_ == count()) return;
  beginInsertRows({}, published_, count() - 1);
  published_ = count();
  endInsertRows();
}

std::u16string_view EntryModel::entry(int index) const {
  const auto i = static_cast<std::size_t>(index);
  const std::size_t start = i == 0 ? 0 : ends_[i - 1];
  return std::u16string_view(texts_).substr(start, ends_[i] - start);
}

int EntryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : published_;
}

QVariant EntryModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  return toQt(entry(index.row()));
}

bool EntryModel::event(QEvent* event) {
  if (event->type() != QEvent::User) return QAbstractListModel::event(event);
  posted_ = false;
  publish();
  return true;
}

}  // namespace forms::qt
