#pragma once

// A one-line dock at the top of the window that asks for a whole number:
// a label, the field "leWert", "Ok" ("pbDockOk") and "Abbruch"
// ("pbDockAbbruch"), stretched 20, 20, 30, 30. It cannot be moved or closed
// by the user; whoever opens it places it in the window and removes it again.

#include <QDockWidget>

class QLineEdit;

class EingabeDock : public QDockWidget
{
    Q_OBJECT

public:
    EingabeDock(const QString &name, const QString &text, int wert, int von, int bis);

    QString text() const;
    // Hides the dock and deletes it once control returns.
    void entfernen();

signals:
    void ok();
    void abbruch();

private:
    QLineEdit *m_feld;
};
