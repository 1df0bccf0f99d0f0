#include "gui/QtKeyDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace quorvane {

namespace {

// How much larger than the dialog's text the message is, as in the Mac's alerts.
constexpr double kMessageScale = 1.15;

QFont messageFont(QFont font) {
    font.setBold(true);
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * kMessageScale);
    } else {
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * kMessageScale)));
    }
    return font;
}

} // namespace

QtKeyDialog::QtKeyDialog(const AlertRequest& request, QWidget* parent)
    : QDialog(parent)
    , m_field(new QLineEdit(this))
    , m_dismissAnswer(kAlertFirstButtonReturn + std::max(0, static_cast<int>(request.buttons.size()) - 1))
    , m_answer(m_dismissAnswer) {
    setWindowTitle(QString::fromStdString(request.messageText));

    auto* message = new QLabel(QString::fromStdString(request.messageText), this);
    message->setTextFormat(Qt::PlainText);
    message->setFont(messageFont(font()));
    auto* informative = new QLabel(QString::fromStdString(request.informativeText), this);
    informative->setTextFormat(Qt::PlainText);
    informative->setWordWrap(true);

    m_field->setEchoMode(QLineEdit::Password);
    m_field->setFixedSize(static_cast<int>(std::lround(request.fieldSize.width)),
                          static_cast<int>(std::lround(request.fieldSize.height)));
    m_field->setPlaceholderText(QString::fromStdString(request.placeholder));
    m_field->setText(QString::fromStdString(request.initialText));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (int index = static_cast<int>(request.buttons.size()) - 1; index >= 0; --index) {
        auto* button =
            new QPushButton(QString::fromStdString(request.buttons[static_cast<std::size_t>(index)]), this);
        const int answer = kAlertFirstButtonReturn + index;
        connect(button, &QPushButton::clicked, this, [this, answer] {
            m_answer = answer;
            accept();
        });
        if (index == 0) {
            // Return in the field presses it.
            button->setDefault(true);
        }
        buttons->addWidget(button);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(message);
    layout->addWidget(informative);
    layout->addWidget(m_field);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_field->setFocus();
}

void QtKeyDialog::reject() {
    m_answer = m_dismissAnswer;
    QDialog::reject();
}

std::string QtKeyDialog::takeFieldText() {
    std::string text = m_field->text().toStdString();
    // setText, unlike clear(), also drops the undo history that still holds the key.
    m_field->setText(QString());
    return text;
}

} // namespace quorvane
