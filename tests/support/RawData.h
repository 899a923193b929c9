#pragma once

#include <QMimeData>

#include <utility>

/// Hands out bytes in a format as they stand, where Qt's own class makes lists of URLs anew.
class RawData final : public QMimeData
{
public:
    RawData(QString format, QByteArray bytes) : _format(std::move(format)), _bytes(std::move(bytes)) {}

    bool hasFormat(const QString& format) const override { return format == _format; }
    QStringList formats() const override { return {_format}; }

protected:
    QVariant retrieveData(const QString& format, QMetaType /*type*/) const override
    {
        return format == _format ? _bytes : QVariant();
    }

private:
    QString _format;
    QByteArray _bytes;
};
