#pragma once

// Records every message box a test provokes (title and text) and closes it with
// the next queued answer, or with Yes/OK.

#include <QMessageBox>
#include <QObject>
#include <QQueue>
#include <QStringList>
#include <QTimer>

class MeldungsBeantworter : public QObject
{
    Q_OBJECT

public:
    explicit MeldungsBeantworter(QObject *parent = nullptr);

    void antworte(QMessageBox::StandardButton knopf) { m_antworten.enqueue(knopf); }

    QStringList titel;
    QStringList texte;

private:
    void pruefen();

    QTimer m_timer;
    QQueue<QMessageBox::StandardButton> m_antworten;
};
