#pragma once

// The list as an XML protocol file: the copy beside the PDF, the backup copy
// every few minutes, and opening a protocol file to continue it, on a tablet
// through the picker dock, on a large screen through the file dialog.

#include <QObject>
#include <QPointer>
#include <QTimer>

class DockFileView;
class Einstellungen;
class ListenDienst;
class QDockWidget;
class QWidget;

class DateiSteuerung : public QObject
{
    Q_OBJECT

public:
    // Dialogs open over the widget given, which also owns this part.
    DateiSteuerung(QWidget *eltern, bool grosserBildschirm, ListenDienst &dienst,
                   Einstellungen &einstellungen);

    // Writes the protocol; a copy the scorer asked for reports a failure.
    bool xmlSpeichern(const QString &pfad);
    void onSicherheitsKopieSpeichern();
    // The backup interval read again from the settings.
    void sicherungsIntervallNeu();
    void onLoadXml();
    void onLoadXmlOk();
    void onLoadXmlAbbruch();

signals:
    // A protocol file replaced the list.
    void protokollGeladen();
    // What the scorer should know about the file taken, before the status line's text.
    void hinweis(const QString &text);
    // A dock to place at the top of the window.
    void dockZeigen(QDockWidget *dock);

private:
    void importieren(const QString &pfad);
    void warnen(const QString &text);

    QWidget *m_eltern;
    bool m_grosserBildschirm;
    ListenDienst &m_dienst;
    Einstellungen &m_einstellungen;
    QTimer m_sicherheitskopieTimer;
    QPointer<DockFileView> m_dockFileView;
};
