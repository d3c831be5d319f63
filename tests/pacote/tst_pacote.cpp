// Packs: made of a folder, refused where they are hostile, installed, taken away.
#include "pacote/instalacao.h"
#include "pacote/montagem.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <filesystem>

using namespace quorel;
using namespace quorel::pacote;
using namespace quorel::teste;

static const QByteArray kManifesto = R"({"title": "Letras é", "language": "pt-BR", "license": "CC-BY-4.0",
    "authors": [{"name": "Ana"}], "version": "1", "formatVersion": 1})";
static const QByteArray kFonte = "tema: t\nobjetivo: o.\n\nROTEIRO 5 Um\nfig: GATO\nbncc: EF01LP02\ndesc: d\n\n"
                                 "AULA Zeto escolha: A\ntexto: x\n* 1\n- 2\n\nAULA Zeto leia: Fim\ntexto: fim\n";

using Arquivos = QList<std::pair<QString, QByteArray>>;

class TstPacote final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void aFolderBecomesAPack();
    void whatStaysOut();
    void hostilePacks_data();
    void hostilePacks();
    void damagedPacks_data();
    void damagedPacks();
    void comesAndGoes();
    void theSecondPackKeepsWhatBothBring();
    void aLinkLeadsNowhere();
    void aReceiptThatSomebodyEdited();
    void byTheProgram();

private:
    QString folder(const QString &name, const QByteArray &figure = "GIF89a");
    QString pack(const QString &name, const Arquivos &files);
    std::unique_ptr<Pacote> open(const QString &path)
    {
        mFaults.clear();
        return Pacote::abre(path, mFaults);
    }
    ResultadoRec install(const Pacote &pacote, bool replace = false)
    {
        return instala(pacote, planeja(pacote, mTo, mFaults).value(), mTo, replace);
    }
    QStringList installed() const
    {
        QStringList all;
        for (QDirIterator walk(mDir->native("/win"), QDir::Files, QDirIterator::Subdirectories); walk.hasNext();)
            all += walk.next().sliced(mDir->native("/win/").size()).toLower(); // some systems keep one spelling
        all.sort();
        return all;
    }

    std::unique_ptr<ScratchDir> mDir;
    Destinos mTo;
    QStringList mFaults;
};

void TstPacote::init()
{
    failOnWarnings();
    reiniciaStartup();
    mDir = std::make_unique<ScratchDir>();
    QDir().mkpath(mDir->native("/win"));
    mTo = destinosEm(mDir->at("\\win"));
}

/// An author's folder with a source, a figure, a sound, a page.
QString TstPacote::folder(const QString &name, const QByteArray &figure)
{
    const QString at = '/' + name;
    mDir->put(at + "/manifesto.json", kManifesto);
    mDir->put(at + "/blocos/F1/0226PO.txt", kFonte);
    mDir->put(at + "/figuras/GATO.GIF", figure);
    mDir->put(at + "/sons/V5_2.wav", "RIFF");
    mDir->put(at + "/arqs/dia/um dia.htm", "<html>");
    return mDir->native(at);
}

/// A pack as any program may have written it.
QString TstPacote::pack(const QString &name, const Arquivos &files)
{
    QFile file(mDir->native('/' + name));
    file.open(QIODevice::ReadWrite);
    EscritorZip zip(file);
    for (const auto &[path, bytes] : files)
        zip.poe(path, bytes, path == "mimetype");
    zip.fecha();
    return file.fileName();
}

void TstPacote::aFolderBecomesAPack()
{
    const MontagemRec read = leiaPasta(folder("letras"));
    QCOMPARE(read.problemas, QStringList());
    QCOMPARE(read.manifesto.level, QStringList{"F1"});
    QCOMPARE(read.manifesto.months, QStringList{"2026-02"});
    QCOMPARE(read.manifesto.bncc, QStringList{"EF01LP02"});
    const QString one = mDir->native("/1.quorel"), two = mDir->native("/2.quorel");
    QCOMPARE(gravaPacote(read, one), QString());
    QCOMPARE(gravaPacote(leiaPasta(folder("letras")), two), QString());
    QCOMPARE(le(one), le(two));
    QCOMPARE(le(one).mid(10, 4), QByteArray("\0\0\x21\0", 4)); // time and date: those of no day
    QCOMPARE(le(one).mid(30, 32), "mimetypeapplication/x-quorel+zip"); // stored, at the place that `file` looks at
    const auto opened = open(one);
    QVERIFY2(opened, qPrintable(mFaults.join('\n')));
    QCOMPARE(opened->manifesto(), read.manifesto);
    QStringList names;
    for (const ArquivoRec &each : opened->arquivos())
        names += each.nome;
    QCOMPARE(names,
        (QStringList{
            "blocos/F1/0226POF1.EDB", "html/dia/um dia.htm", "midia/Fig/G/_/GATO.GIF", "midia/Som/V/V5_2.wav"}));
}

void TstPacote::whatStaysOut()
{
    const QString path = folder("letras");
    mDir->put("/letras/figuras/COMPRIDAS.GIF");
    mDir->put("/letras/figuras/desenha.py");
    mDir->put("/letras/arqs/jogo.exe");
    mDir->put("/letras/blocos/F1/0226MAI1.edb");
    QCOMPARE(leiaPasta(path).notas.size(), 4);
    mDir->put("/letras/blocos/F1/0226MA.txt", "ROTEIRO\n\xff\xfe");
    mDir->put("/letras/Fig/G/gato.gif");
    const QStringList faults = leiaPasta(path).problemas;
    QVERIFY(faults.join('\n').contains("0226MA.txt:"));
    QVERIFY(faults.contains("dois arquivos teriam o nome midia/Fig/g/_/gato.gif no pacote"));
    mDir->put("/nada/manifesto.json", "{}");
    QCOMPARE(leiaPasta(mDir->native("/nada")).problemas.size(), 6);
    QVERIFY(leiaPasta(mDir->native("/vazia")).problemas.first().contains("\"title\": \"Nome do pacote\""));
}

static Arquivos well(const QString &name, const QByteArray &bytes = "x")
{
    return {{"mimetype", kTipo}, {"manifesto.json", kManifesto}, {name, bytes}};
}

void TstPacote::hostilePacks_data()
{
    const Table<Arquivos, QString> row("files", "fault");
    for (const char *name : {"../mau.htm", "html/../../mau.htm", "/etc/mau.htm", "C:/mau.htm", "C:\\mau.htm",
             "html\\..\\mau.htm", "html/NUL.htm", "html/com1.htm", "html/mau.exe", "html/.mau.htm", "html/mau.htm. ",
             "html/a:b.htm", "html/a/b/c/d/e/f/g.htm", "midia/Fig/X/_/GATO.GIF", "midia/Fig/G/_/GATO.EXE",
             "blocos/F1/0226POF2.EDB", "blocos/F1/../../0226POF1.EDB", "Cadastros.mdb", "html//mau.htm"})
        row(name, well(name), QString("nome que um pacote não pode conter: \"%1\"").arg(name));
    row("the same name in another case",
        {{"mimetype", kTipo}, {"manifesto.json", kManifesto}, {"html/a.htm", "x"}, {"html/A.HTM", "y"}},
        "o nome aparece duas vezes: html/A.HTM");
    row("no mimetype", {{"manifesto.json", kManifesto}},
        "não é um pacote de lições: o primeiro arquivo não é \"mimetype\" com application/x-quorel+zip");
    row("another program's", {{"mimetype", "application/epub+zip"}},
        "não é um pacote de lições: o primeiro arquivo não é \"mimetype\" com application/x-quorel+zip");
    row("no manifesto", {{"mimetype", kTipo}, {"html/a.htm", "x"}}, "falta o manifesto.json, ou não pode ser lido");
    row("of a newer form",
        {{"mimetype", kTipo},
            {"manifesto.json", QByteArray(kManifesto).replace("\"formatVersion\": 1", "\"formatVersion\": 2")}},
        "manifesto.json: \"formatVersion\" deve ser 1; um pacote de forma mais nova pede um programa mais novo");
    Arquivos many = well("html/a.htm");
    for (int i = 0; i < 10000; ++i)
        many.append({QString("html/%1.htm").arg(i), {}});
    row("ten thousand files", many, "o pacote diz ter 10003 arquivos; o máximo é 4000");
    row("a bomb", well("html/a.htm", QByteArray((64 << 20) + 1, '\0')), "passa de 64 MB: html/a.htm");
}

void TstPacote::hostilePacks()
{
    QFETCH(Arquivos, files);
    QFETCH(QString, fault);
    QVERIFY(!open(pack("mau.quorel", files)));
    QCOMPARE(mFaults, QStringList{fault});
}

void TstPacote::damagedPacks_data()
{
    const Table<QByteArray, int, QByteArray, QString> row("marker", "behind", "bytes", "fault");
    // Of the directory's entry of the last file: its attributes, flags, claimed size; of its data: one byte.
    row("a link", "PK\x01\x02", 38, QByteArray("\0\0\xff\xa1", 4),
        "é um atalho (link), que um pacote não pode conter: html/a.htm");
    row("encrypted", "PK\x01\x02", 8, QByteArray("\x01\x08", 2),
        "está cifrado, ou comprimido de um modo que não é lido: html/a.htm");
    row("another method", "PK\x01\x02", 10, QByteArray("\x0e\0", 2),
        "está cifrado, ou comprimido de um modo que não é lido: html/a.htm");
    row("it is more than it claims", "PK\x01\x02", 24, QByteArray("\x05\0\0\0", 4),
        "está danificado, ou é maior do que diz: html/a.htm");
    row("one bit", "html/a.htm", 14, "\x7f", "está danificado, ou é maior do que diz: html/a.htm");
    row("cut off", "", 0, "", "não é um pacote: o arquivo não existe, não pode ser lido ou não é um zip");
}

void TstPacote::damagedPacks()
{
    QFETCH(QByteArray, marker);
    QFETCH(int, behind);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, fault);
    const QString path = pack("mau.quorel", well("html/a.htm", "um texto que se comprime, se comprime, se comprime"));
    QByteArray zip = le(path);
    if (marker.isEmpty())
        zip.chop(40);
    else
        zip.replace(
            (marker.startsWith("PK") ? zip.lastIndexOf(marker) : zip.indexOf(marker)) + behind, bytes.size(), bytes);
    escreve(path, zip);
    const auto opened = open(path);
    if (opened)
        QVERIFY(!planeja(*opened, mTo, mFaults));
    QVERIFY2(mFaults.contains(fault), qPrintable(mFaults.join('\n')));
    QCOMPARE(installed(), QStringList());
}

void TstPacote::comesAndGoes()
{
    gravaPacote(leiaPasta(folder("letras")), mDir->native("/1.quorel"));
    const auto opened = open(mDir->native("/1.quorel"));
    mDir->put("/win/zeto_mm/fig/g/_/gato.gif", "da escola"); // another spelling of the same place, where case counts
    mDir->put("/win/DBBLOCOS/F1/0226MAF1.EDB", "outro bloco");
    const QStringList before = installed();
    QCOMPARE(install(*opened).deixados, 1);
    QCOMPARE(mDir->get("/win/zeto_mm/fig/g/_/gato.gif"), "da escola");
    QCOMPARE(install(*opened, true).postos, 1);
    QCOMPARE(mDir->get("/win/zeto_mm/fig/g/_/gato.gif"), "GIF89a");
    QVERIFY(mDir->get("/win/DBBLOCOS/F1/0226POF1.EDB").contains("NomeRot =Um"));
    QCOMPARE(install(*opened).iguais, 4);
    mDir->put("/win/Arqs/dia/um dia.htm", "mudado pela professora");
    const RetiradaRec away = retira(leRecibo(mDir->native("/win/pacotes"), "letras-e").value(), mTo);
    QCOMPARE(away.falha, QString());
    QCOMPARE(away.deixados, QStringList{mDir->native("/win/Arqs/dia/um dia.htm")});
    QCOMPARE(away.devolvidos, 1);
    QCOMPARE(mDir->get("/win/zeto_mm/fig/g/_/gato.gif"), "da escola");
    QCOMPARE(installed(), QStringList("arqs/dia/um dia.htm") + before);
}

void TstPacote::theSecondPackKeepsWhatBothBring()
{
    const QString other = QString::fromUtf8(kManifesto).replace("Letras", "Outras");
    const auto first = open(pack("1.quorel", well("html/a.htm")));
    const auto second =
        open(pack("2.quorel", {{"mimetype", kTipo}, {"manifesto.json", other.toUtf8()}, {"html/a.htm", "x"}}));
    QCOMPARE(install(*first).postos, 1);
    QCOMPARE(install(*second).iguais, 1);
    const QString receipts = mDir->native("/win/pacotes");
    QCOMPARE(retira(leRecibo(receipts, "letras-e").value(), mTo).deixados.size(), 1);
    QCOMPARE(mDir->get("/win/Arqs/a.htm"), "x");
    QCOMPARE(retira(leRecibo(receipts, "outras-e").value(), mTo).retirados, 1);
    QCOMPARE(installed(), QStringList());
}

void TstPacote::aLinkLeadsNowhere()
{
    QDir().mkpath(mDir->native("/fora"));
    QDir().mkpath(mDir->native("/win/Arqs"));
    std::error_code refused; // by a system that makes links for its administrator alone
    std::filesystem::create_directory_symlink(
        mDir->native("/fora").toStdU16String(), mDir->native("/win/Arqs/dia").toStdU16String(), refused);
    const auto opened = open(pack("1.quorel", well("html/dia/a.htm")));
    QCOMPARE(install(*opened, true).deixados, refused ? 0 : 1);
    QVERIFY(QDir(mDir->native("/fora")).isEmpty());
}

void TstPacote::aReceiptThatSomebodyEdited()
{
    mDir->put("/fora/nota.txt", "x");
    const QString sum = somaDoArquivo(mDir->native("/fora/nota.txt"));
    const ReciboRec recibo{"mau", "Mau", "", {mDir->native()},
        {{mDir->native("/fora/nota.txt"), sum, true, {}},
            {mDir->native("/win/Arqs/../../fora/nota.txt"), sum, true, {}}}};
    QCOMPARE(retira(recibo, mTo).retirados, 0);
    QCOMPARE(mDir->get("/fora/nota.txt"), "x");
}

/// The commands, with the questions that they ask.
void TstPacote::byTheProgram()
{
    qputenv("QUOREL_WINDIR", mDir->native("/win").toUtf8());
    QDir().mkpath(mDir->native("/win/QUOREL2001"));
    folder("letras");
    const auto run = [this](const QString &arguments, const QByteArray &answers = {}) {
        QProcess process;
        process.setWorkingDirectory(mDir->native());
        process.start(QUOREL_BIN "/quorel-blocos", arguments.split(' '));
        process.write(answers);
        process.closeWriteChannel();
        process.waitForFinished();
        return QString::number(process.exitCode()) + ' ' + QString::fromUtf8(linhas(process.readAllStandardOutput()));
    };
    QVERIFY(run("pacote letras").startsWith("0 "));
    QCOMPARE(run("verifica letras.quorel"), "0 ");
    QVERIFY(run("instala letras.quorel", "n\n").startsWith("2 Letras é, versão 1, de Ana, licença CC-BY-4.0\n  novo"));
    QCOMPARE(installed(), QStringList());
    QVERIFY(run("instala letras.quorel", "s\n").contains("Para desfazer: quorel-blocos retira letras-e"));
    QCOMPARE(run("retira"), "0 letras-e  Letras é  1\n");
    QVERIFY(run("retira letras-e --sim").contains("4 retirados"));
    QCOMPARE(installed(), QStringList());
    mDir->put("/mau.quorel", "não é um zip");
    QVERIFY(run("instala mau.quorel --sim").startsWith("1 "));
}

QTEST_MAIN(TstPacote)
#include "tst_pacote.moc"
