#include "pacote/zip.h"

#include <QBuffer>
#include <QFile>
#include <QStringDecoder>

#include <minizip/unzip.h>
#include <minizip/zip.h>

#include <array>
#include <utility>

namespace quorel::pacote {

namespace {

constexpr uLong kUtf8 = 1UL << 11; // flag of an entry: its name is UTF-8
constexpr uLong kCifrado = 1;
constexpr uLong kUnix = 3 << 8; // "made by", whose attributes have a file's kind in their upper half
constexpr int kMetade = 16;
constexpr uLong kTipoDeArquivo = 0170000, kArquivoComum = 0100000;
constexpr uLong kModoComum = 0100644;

QIODevice &deviceOf(voidpf stream)
{
    return *static_cast<QIODevice *>(stream);
}

/// What minizip asks of a file, by a device of Qt's: its own file functions know no names beyond the system's code
/// page.
zlib_filefunc64_def functionsOf(QIODevice &device)
{
    zlib_filefunc64_def f = {};
    f.zopen64_file = [](voidpf opaque, const void *, int) { return opaque; };
    f.zread_file = [](voidpf, voidpf stream, void *into, uLong size) {
        return uLong(qMax(qint64(0), deviceOf(stream).read(static_cast<char *>(into), qint64(size))));
    };
    f.zwrite_file = [](voidpf, voidpf stream, const void *from, uLong size) {
        return uLong(qMax(qint64(0), deviceOf(stream).write(static_cast<const char *>(from), qint64(size))));
    };
    f.ztell64_file = [](voidpf, voidpf stream) { return ZPOS64_T(deviceOf(stream).pos()); };
    f.zseek64_file = [](voidpf, voidpf stream, ZPOS64_T offset, int origin) -> long {
        QIODevice &file = deviceOf(stream);
        qint64 base = 0;
        if (origin == ZLIB_FILEFUNC_SEEK_CUR)
            base = file.pos();
        else if (origin == ZLIB_FILEFUNC_SEEK_END)
            base = file.size();
        const qint64 place = base + qint64(offset);
        return place >= 0 && place <= file.size() && file.seek(place) ? 0 : -1;
    };
    f.zclose_file = [](voidpf, voidpf) { return 0; };
    f.zerror_file = [](voidpf, voidpf) { return 0; };
    f.opaque = &device;
    return f;
}

/// Empty for bytes that are no text in UTF-8, or hold a NUL.
QString nameOf(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString name = decoder(bytes);
    return decoder.hasError() || name.contains(QChar(0)) ? QString() : name;
}

EntradaZip entryOf(unzFile zip)
{
    constexpr uLong kMaxNome = 255;
    unz_file_info64 info = {};
    std::array<char, kMaxNome + 1> name = {};
    if (unzGetCurrentFileInfo64(zip, &info, name.data(), name.size(), nullptr, 0, nullptr, 0) != UNZ_OK)
        return {};
    EntradaZip entry;
    if (info.size_filename <= kMaxNome)
        entry.nome = nameOf({name.data(), qsizetype(info.size_filename)});
    entry.tamanho = info.uncompressed_size > ZPOS64_T(INT64_MAX) ? INT64_MAX : qint64(info.uncompressed_size);
    entry.guardada = info.compression_method == 0;
    entry.legivel = (entry.guardada || info.compression_method == Z_DEFLATED) && (info.flag & kCifrado) == 0;
    const uLong kind = (info.external_fa >> kMetade) & kTipoDeArquivo;
    const bool directory = entry.nome.endsWith(u'/');
    entry.atalho = kind != 0 && kind != kArquivoComum && !directory;
    return entry;
}

} // namespace

struct LeitorZip::Dados
{
    explicit Dados(const QString &native) : file(native) { }
    ~Dados()
    {
        if (zip)
            unzClose(zip);
    }
    Q_DISABLE_COPY_MOVE(Dados)

    void list();

    QFile file;
    unzFile zip = nullptr;
    qint64 count = 0;
    std::vector<EntradaZip> entries;
    std::vector<unz64_file_pos> places;
};

void LeitorZip::Dados::list()
{
    for (int at = unzGoToFirstFile(zip); at == UNZ_OK && qint64(entries.size()) < count; at = unzGoToNextFile(zip)) {
        unz64_file_pos place = {};
        unzGetFilePos64(zip, &place);
        entries.push_back(entryOf(zip));
        places.push_back(place);
    }
}

LeitorZip::LeitorZip(const QString &native, qint64 maxEntradas) : d(std::make_unique<Dados>(native))
{
    if (!d->file.open(QIODevice::ReadOnly))
        return;
    zlib_filefunc64_def functions = functionsOf(d->file);
    d->zip = unzOpen2_64("", &functions);
    unz_global_info64 info = {};
    if (!d->zip || unzGetGlobalInfo64(d->zip, &info) != UNZ_OK)
        return;
    d->count = info.number_entry > ZPOS64_T(INT64_MAX) ? INT64_MAX : qint64(info.number_entry);
    if (d->count <= maxEntradas)
        d->list();
}

LeitorZip::~LeitorZip() = default;

bool LeitorZip::aberto() const
{
    return d->zip != nullptr;
}

qint64 LeitorZip::quantas() const
{
    return d->count;
}

const std::vector<EntradaZip> &LeitorZip::entradas() const
{
    return d->entries;
}

bool LeitorZip::copia(std::size_t indice, QIODevice &destino, qint64 limite)
{
    constexpr unsigned kPiece = 1 << 16; // bytes
    if (unzGoToFilePos64(d->zip, &d->places[indice]) != UNZ_OK || unzOpenCurrentFile(d->zip) != UNZ_OK)
        return false;
    const qint64 most = qMin(limite, d->entries[indice].tamanho);
    std::vector<char> piece(kPiece);
    qint64 all = 0;
    bool good = true;
    for (;;) {
        const int got = unzReadCurrentFile(d->zip, piece.data(), kPiece);
        all += qMax(got, 0);
        good = got >= 0 && all <= most && destino.write(piece.data(), got) == got;
        if (got <= 0 || !good)
            break;
    }
    return unzCloseCurrentFile(d->zip) == UNZ_OK && good && all == d->entries[indice].tamanho;
}

std::optional<QByteArray> LeitorZip::le(std::size_t indice, qint64 limite)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!copia(indice, buffer, limite))
        return std::nullopt;
    return buffer.data();
}

struct EscritorZip::Dados
{
    zipFile zip = nullptr;
    bool good = true;
};

EscritorZip::EscritorZip(QIODevice &destino) : d(std::make_unique<Dados>())
{
    zlib_filefunc64_def functions = functionsOf(destino);
    d->zip = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &functions);
    d->good = d->zip != nullptr;
}

EscritorZip::~EscritorZip()
{
    fecha();
}

bool EscritorZip::poe(const QString &nome, const QByteArray &bytes, bool guardado)
{
    if (!d->good)
        return false;
    zip_fileinfo info = {};
    info.tmz_date = {.tm_sec = 0, .tm_min = 0, .tm_hour = 0, .tm_mday = 1, .tm_mon = 0, .tm_year = 1980}; // of no file
    info.external_fa = kModoComum << kMetade;
    const int method = guardado ? 0 : Z_DEFLATED;
    d->good = zipOpenNewFileInZip4_64(d->zip, nome.toUtf8().constData(), &info, nullptr, 0, nullptr, 0, nullptr, method,
                  Z_BEST_COMPRESSION, 0, -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY, nullptr, 0, kUnix, kUtf8, 0)
            == ZIP_OK
        && zipWriteInFileInZip(d->zip, bytes.constData(), unsigned(bytes.size())) == ZIP_OK
        && zipCloseFileInZip(d->zip) == ZIP_OK;
    return d->good;
}

bool EscritorZip::fecha()
{
    if (d->zip)
        d->good = zipClose(std::exchange(d->zip, nullptr), nullptr) == ZIP_OK && d->good;
    return d->good;
}

} // namespace quorel::pacote
