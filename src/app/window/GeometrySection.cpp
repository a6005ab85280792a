#include "window/GeometrySection.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "ui/WindowTexts.h"
#include "window/SectionStyle.h"

namespace zd::app {

namespace {

QLineEdit* dimensionField(const QString& placeholder, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setPlaceholderText(placeholder);
    field->setValidator(new QIntValidator(0, 100000, field));
    QFont font = uiFont(12);
    font.setStyleHint(QFont::Monospace);
    field->setFont(font);
    field->setFixedWidth(90);
    return field;
}

}  // namespace

GeometrySection::GeometrySection(ContentView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      picker_(new FillingPopUp<OutputSize>(this)),
      customRow_(new QWidget(this)),
      width_(dimensionField("Width", customRow_)),
      height_(dimensionField("Height", customRow_)),
      currentSize_(secondaryText({}, 11, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(sectionLabel("Output canvas"));
    column->addWidget(picker_);
    auto* row = new QHBoxLayout(customRow_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(width_);
    row->addWidget(secondaryText(QString::fromUtf8("\u00d7"), 12));
    row->addWidget(height_);
    row->addWidget(secondaryText("pixels", 11));
    row->addStretch(1);
    column->addWidget(customRow_);
    column->addWidget(currentSize_);
    // Typing changes the state only; the store hears of the value when the field commits.
    connect(width_, &QLineEdit::textEdited, this,
            [this](const QString& text) { view_.setCustomCanvasWidth(text.toInt()); });
    connect(height_, &QLineEdit::textEdited, this,
            [this](const QString& text) { view_.setCustomCanvasHeight(text.toInt()); });
    connect(width_, &QLineEdit::editingFinished, this, [this] { view_.commitCustomCanvasWidth(); });
    connect(height_, &QLineEdit::editingFinished, this,
            [this] { view_.commitCustomCanvasHeight(); });
    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    refresh();
}

void GeometrySection::refresh() {
    std::vector<FillingPopUp<OutputSize>::Item> items;
    for (OutputSize size : allCases<OutputSize>())
        items.emplace_back(size, rawString(size));
    picker_->update(rawString(view_.outputSize), items,
                    [this](const OutputSize& size) { view_.setOutputSize(size); });
    customRow_->setVisible(view_.outputSize == OutputSize::custom);
    currentSize_->setVisible(view_.outputSize == OutputSize::current);
    currentSize_->setText(qs(WindowTexts::canvasSizeText(view_.canvasSize())));
    // A field being typed in keeps its own text.
    if (!width_->hasFocus())
        width_->setText(QString::number(view_.customCanvasWidth));
    if (!height_->hasFocus())
        height_->setText(QString::number(view_.customCanvasHeight));
}

}  // namespace zd::app
