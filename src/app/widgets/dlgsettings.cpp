#include "app/widgets/dlgsettings.h"

#include "ui_dlgsettings.h"

#include <QSettings>

DlgSettings::DlgSettings(QSettings *einstellungen, bool wlan, QWidget *parent)
    : QDialog(parent), ui(new Ui::DlgSettings), m_einstellungen(einstellungen)
{
    ui->setupUi(this);
    QPalette farben = palette();
    farben.setColor(QPalette::All, QPalette::Window, Qt::cyan);
    setPalette(farben);
    setAutoFillBackground(true);
    ui->chkWlanBenutzen->setChecked(wlan);
    ui->chkSpielstandsAnzeige->setChecked(
        m_einstellungen->value(QStringLiteral("spielstandmitfabianpunkten"), true).toBool());
    connect(ui->chkSpielstandsAnzeige, &QCheckBox::toggled, this,
            &DlgSettings::onSpielstandsanzeige);
    connect(ui->chkWlanBenutzen, &QCheckBox::toggled, this, &DlgSettings::onWlanBenutzen);
}

DlgSettings::~DlgSettings() = default;

void DlgSettings::onSpielstandsanzeige(bool fabian)
{
    m_einstellungen->setValue(QStringLiteral("spielstandmitfabianpunkten"), fabian);
}

void DlgSettings::onWlanBenutzen(bool benutzen)
{
    emit wlanBenutzen(benutzen);
}
