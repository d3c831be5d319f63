#include "autoria/figurefile.h"

#include "autoria/mediaplace.h"
#include "platform/caminho.h"
#include "startup/quorel_zeto.h"

#include <QBuffer>
#include <QDir>
#include <QImageReader>
#include <QPainter>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr QSize kPage(400, 300); // pixels
static constexpr int kButton = 85; // pixels, of the sample's buttons

QString faultOfFigureName(const QString &name)
{
    static const QRegularExpression good(u"^[A-Za-z0-9_À-ÖØ-öø-ÿ]{1,8}$"_s);
    static const QRegularExpression device(
        u"^(con|prn|aux|nul|(com|lpt)[1-9])$"_s, QRegularExpression::CaseInsensitiveOption);
    if (good.match(name).hasMatch() && !device.match(name).hasMatch())
        return {};
    return u"\"%1\" não serve de nome: use de 1 a 8 letras, algarismos ou \"_\", sem ponto, hífen nem espaço"_s.arg(
        name);
}

static QImage asButton(const QImage &image)
{
    const QImage scaled = image.scaled(kButton, kButton, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    return scaled.copy((scaled.width() - kButton) / 2, (scaled.height() - kButton) / 2, kButton, kButton);
}

QImage figureFrom(const QString &photo, FigureUse use, QString &fault)
{
    constexpr qint64 kMaxPixels = 100'000'000;
    QImageReader reader(photo);
    reader.setAutoTransform(true); // a telephone writes which side is up
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > kMaxPixels) {
        fault = u"a figura é grande demais: %1 por %2 pontos"_s.arg(size.width()).arg(size.height());
        return {};
    }
    const QImage read = reader.read();
    if (read.isNull()) {
        fault = u"não é uma figura que se possa ler (JPEG, PNG, GIF, BMP): "_s + QDir::toNativeSeparators(photo);
        return {};
    }
    QImage fitted = read;
    if (use == FigureUse::Button)
        fitted = asButton(read);
    else if (read.width() > kPage.width() || read.height() > kPage.height())
        fitted = read.scaled(kPage, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage figure(fitted.size(), QImage::Format_RGB32); // made anew: the texts of the file's image don't come along
    figure.fill(Qt::white);
    QPainter(&figure).drawImage(0, 0, fitted);
    return figure;
}

QString putFigure(const QImage &figure, const QString &name, bool replace, QString &fault)
{
    if (fault = faultOfFigureName(name); !fault.isEmpty())
        return {};
    const QString place = figurePlace(name);
    // A GIF of that name would be found before ours.
    if (const QString there = nativePath(gConfig.N_Fig(name));
        !there.isEmpty() && (!replace || there.endsWith(u".gif"_s, Qt::CaseInsensitive))) {
        fault = u"já existe uma figura com esse nome: "_s + QDir::toNativeSeparators(there);
        return {};
    }
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    figure.convertToFormat(QImage::Format_RGB888).save(&bytes, "BMP");
    return putMedia(place, bytes.data(), fault);
}

} // namespace quorel
