#include "app/widgets/dlgsettings.h"

#include "core/service/einstellungen.h"
#include "ui_dlgsettings.h"

DlgSettings::DlgSettings(Einstellungen &einstellungen, bool wlan, QWidget *parent)
    : QDialog(parent), ui(new Ui::DlgSettings), m_einstellungen(einstellungen)
{
    ui->setupUi(this);
    QPalette farben = palette();
    farben.setColor(QPalette::All, QPalette::Window, Qt::cyan);
    setPalette(farben);
    setAutoFillBackground(true);
    ui->chkWlanBenutzen->setChecked(wlan);
    ui->chkSpielstandsAnzeige->setChecked(m_einstellungen.mitFabianpunkten());
    connect(ui->chkSpielstandsAnzeige, &QCheckBox::toggled, this,
            &DlgSettings::onSpielstandsanzeige);
    connect(ui->chkWlanBenutzen, &QCheckBox::toggled, this, &DlgSettings::onWlanBenutzen);
}

DlgSettings::~DlgSettings() = default;

void DlgSettings::onSpielstandsanzeige(bool fabian)
{
    m_einstellungen.mitFabianpunktenSetzen(fabian);
}

void DlgSettings::onWlanBenutzen(bool benutzen)
{
    emit wlanBenutzen(benutzen);
}
