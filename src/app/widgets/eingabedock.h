#pragma once

// A one-line dock at the top of the window that asks for a whole number:
// a label, the field "leWert", "Ok" ("pbDockOk") and "Abbruch"
// ("pbDockAbbruch"), stretched 20, 20, 30, 30. It cannot be moved or closed
// by the user; whoever opens it removes it again.

#include <QDockWidget>

class QLineEdit;
class QMainWindow;

class EingabeDock : public QDockWidget
{
    Q_OBJECT

public:
    EingabeDock(QMainWindow *fenster, const QString &name, const QString &text, int wert, int von,
                int bis);

    QString text() const;
    // Takes the dock out of the window and deletes it once control returns.
    void entfernen();

signals:
    void ok();
    void abbruch();

private:
    QMainWindow *m_fenster;
    QLineEdit *m_feld;
};
