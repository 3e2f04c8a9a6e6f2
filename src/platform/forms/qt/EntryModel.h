#pragma once

#include <QAbstractListModel>
#include <string>
#include <string_view>
#include <vector>

namespace forms::qt {

/// The entries of a list, packed into one string, since there can be tens of thousands. Added
/// entries are announced to the view in one batch: in the next event loop iteration, or by
/// `publish`.
class EntryModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void clear();
  void add(std::u16string_view entry);
  void publish();
  int count() const { return static_cast<int>(ends_.size()); }
  /// The text of an entry; `index` must be below `count()`.
  std::u16string_view entry(int index) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 protected:
  bool event(QEvent* event) override;

 private:
  std::u16string texts_;
  std::vector<std::size_t> ends_;
  int published_ = 0;
  bool posted_ = false;
};

}  // namespace forms::qt
