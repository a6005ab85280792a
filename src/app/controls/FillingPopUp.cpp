#include "controls/FillingPopUp.h"

namespace zd::app {

PopUpButton::PopUpButton(QWidget* parent) : QComboBox(parent) {
    // Takes all the width offered, and may be shrunk below its longest title.
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
    connect(this, &QComboBox::activated, this, [this](int index) { chosen(index); });
}

void PopUpButton::setItems(const QString& selectionLabel, const QStringList& titles) {
    QStringList present;
    for (int i = 0; i < count(); ++i)
        present << itemText(i);
    if (present != titles) {
        clear();
        addItems(titles);
    }
    const int index = static_cast<int>(titles.indexOf(selectionLabel));
    setPlaceholderText(index < 0 ? selectionLabel : QString());
    setCurrentIndex(index);
}

QString PopUpButton::shownText() const {
    return currentIndex() < 0 ? placeholderText() : currentText();
}

}  // namespace zd::app
