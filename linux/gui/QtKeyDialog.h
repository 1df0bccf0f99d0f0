// The alert with a masked text field as a Qt dialog: the API key dialog's window.
#pragma once

#include "platform/Alert.h"

#include <QDialog>
#include <QLineEdit>

#include <string>

namespace quorvane {

// Laid out as the Mac's alert is: the message in bold, the informative text,
// the field, and the buttons along the bottom with the first, the default,
// at the right end and the others leftwards in the request's order.
class QtKeyDialog : public QDialog {
    Q_OBJECT

public:
    explicit QtKeyDialog(const AlertRequest& request, QWidget* parent = nullptr);

    // The pressed button's answer (kAlertFirstButtonReturn + its index); the
    // last button's when the dialog was dismissed with Escape or closed.
    int buttonAnswer() const { return m_answer; }
    // The field's text, which is then cleared with its undo history so that
    // the key does not stay in the dialog.
    std::string takeFieldText();

public slots:
    void reject() override;

private:
    QLineEdit* m_field;
    int m_dismissAnswer;
    int m_answer;
};

} // namespace quorvane
