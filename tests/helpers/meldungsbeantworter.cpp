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
        QAbstractButton *knopf = nullptr;
        if (!m_antworten.isEmpty())
            knopf = box->button(m_antworten.dequeue());
        if (!knopf)
            knopf = box->button(QMessageBox::Yes);
        if (!knopf)
            knopf = box->button(QMessageBox::Ok);
        if (!knopf)
            knopf = box->buttons().value(0);
        if (knopf)
            knopf->click();
        return;
    }
}
