#pragma once

// Money fields take "1,5" as well as "1.5": scorers type the decimal comma
// they write on paper, the manager sends a point.

#include <QDoubleValidator>

class GeldValidator : public QDoubleValidator
{
    Q_OBJECT

public:
    GeldValidator(double von, double bis, QObject *parent = nullptr);

    State validate(QString &text, int &position) const override;
};
