#include "app/widgets/geldvalidator.h"

GeldValidator::GeldValidator(double von, double bis, QObject *parent)
    : QDoubleValidator(von, bis, 1, parent)
{
    setNotation(QDoubleValidator::StandardNotation);
    setLocale(QLocale::c());
}

QValidator::State GeldValidator::validate(QString &text, int &position) const
{
    QString mitPunkt = text;
    mitPunkt.replace(QLatin1Char(','), QLatin1Char('.'));
    return QDoubleValidator::validate(mitPunkt, position);
}
