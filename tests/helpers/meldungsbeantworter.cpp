#include "helpers/meldungsbeantworter.h"

#include <QAbstractButton>
#include <QApplication>

MeldungsBeantworter::MeldungsBeantworter(QObject *parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &MeldungsBeantworter::pruefen);
    m_timer.start(10);
}

void MeldungsBeantworter::pruefen()
{
    for (QWidget *fenster : QApplication::topLevelWidgets()) {
        auto *box = qobject_cast<QMessageBox *>(fenster);
        if (!box || !box->isVisible())
            continue;
        titel << box->windowTitle();
        texte << box->text();
        QAbstractButton *knopf =
            m_antworten.isEmpty() ? nullptr : box->button(m_antworten.dequeue());
        // Every box of the window offers Yes or OK.
        if (!knopf)
            knopf = box->button(box->button(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok);
        knopf->click();
        return;
    }
}
