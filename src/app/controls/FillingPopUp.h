#pragma once
// A pop-up button that takes the full width of its row. Its items are rebuilt only when their
// titles change; equal titles stay apart, the position in the list picking the id. A
// selection label that is no item's title is shown as the button's text, with no item chosen.

#include <QComboBox>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zd::app {

class PopUpButton : public QComboBox {
  public:
    explicit PopUpButton(QWidget* parent = nullptr);

    // Shows `titles` and selects the first item titled `selectionLabel`.
    void setItems(const QString& selectionLabel, const QStringList& titles);
    // The text the button shows.
    QString shownText() const;

  protected:
    // The chosen position, from the user's choice only.
    virtual void chosen(int index) = 0;
};

template <class Id>
class FillingPopUp : public PopUpButton {
  public:
    using Item = std::pair<Id, std::string>;
    explicit FillingPopUp(QWidget* parent = nullptr) : PopUpButton(parent) {}

    void update(const std::string& selectionLabel, const std::vector<Item>& items,
                std::function<void(const Id&)> onSelect) {
        onSelect_ = std::move(onSelect);
        ids_.clear();
        QStringList titles;
        for (const auto& [id, title] : items) {
            ids_.push_back(id);
            titles << QString::fromStdString(title);
        }
        setItems(QString::fromStdString(selectionLabel), titles);
    }

  protected:
    void chosen(int index) override {
        if (index >= 0 && static_cast<std::size_t>(index) < ids_.size() && onSelect_)
            onSelect_(ids_[static_cast<std::size_t>(index)]);
    }

  private:
    std::function<void(const Id&)> onSelect_;
    std::vector<Id> ids_;
};

}  // namespace zd::app
