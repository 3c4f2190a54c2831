#pragma once

// Answers the message boxes a test provokes: every box that appears is
// recorded (title and text) and closed with the next queued answer, or with
// Yes/OK when the queue is empty.

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
