#pragma once

// The two switches of "Liste -> Einstellungen": standings with Seeger-Fabian
// points (stored at once) and the network link (for this run only). Both act
// while the dialog is open; OK and closing only end it.

#include <QDialog>

#include <memory>

class Einstellungen;

namespace Ui {
class DlgSettings;
}

class DlgSettings : public QDialog
{
    Q_OBJECT

public:
    DlgSettings(Einstellungen &einstellungen, bool wlan, QWidget *parent = nullptr);
    ~DlgSettings() override;

signals:
    void wlanBenutzen(bool benutzen);

public slots:
    void onSpielstandsanzeige(bool fabian);
    void onWlanBenutzen(bool benutzen);

private:
    std::unique_ptr<Ui::DlgSettings> ui;
    Einstellungen &m_einstellungen;
};
