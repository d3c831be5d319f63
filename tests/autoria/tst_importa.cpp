// What teachers already have: questions in other forms, photos, recordings, a voice.
#include "autoria/figurefile.h"
#include "autoria/importer.h"
#include "autoria/soundfile.h"
#include "autoria/source.h"
#include "autoria/voicemaker.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QImage>
#include <QImageReader>
#include <QtEndian>

using namespace quorel;
using namespace quorel::teste;

class TstImporta final : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void questions_data();
    void questions();
    void anAfternoonOfQuestions();
    void aPhotoLeavesItsPlaceBehind();
    void recordings_data();
    void recordings();
    void whatIsToBeHeard_data();
    void whatIsToBeHeard();
};

void TstImporta::questions_data()
{
    // The source without its head and its last page; what is told, "line code" each.
    const Table<QString, QString, QString> row("text", "aulas", "told");
    row("Aiken", "Qual é a cor\ndo céu?\nA. verde\nB) azul\nANSWER: B\n",
        "escolha: Questão 1|Qual é a cor\\do céu?|-verde *azul", "");
    row("Aiken: a letter that is not there, a line that is nothing, no answer",
        "P?\nA. a\nisto não\nANSWER: C\n\nQ?\nA. b\nB. c\n", "escolha: Questão 1|P?|-a;escolha: Questão 2|Q?|-b -c",
        "1 sem-certa,1 uma-opcao,3 nao-entendido,4 letra,6 sem-certa");
    row("GIFT: choice with feedback", "// nota\n::Cores:: Qual \\{cor\\}? {=azul#Isso! ~verde#Olhe o céu.}",
        "escolha: Cores|Qual {cor}?|*azul -verde|Isso!|Olhe o céu.", "");
    row("GIFT: several right ones, true or false, a text, a number",
        "Pares? {~%50%2 ~%50%4 ~%-100%3}\n\nO sol é frio. {F#É quente.}\n\nCapital? {=Brasília =Brasilia}\n\n1+1? {#2}",
        "marque: Questão 1|Pares?|*2 *4 -3;escolha: Questão 2|O sol é frio.|-Verdadeiro *Falso||É quente.;"
        "escreva: Questão 3|Capital?|=Brasília/Brasilia;escreva: Questão 4|1+1?|=2",
        "");
    row("GIFT: a gap, a page, what can't be",
        "O {=gato ~sol} mia.\n\nSó um texto.\n\nLigue {=a -> b}\n\nPi? {#3.1:0.1}\n\nRedija {}\n\nx {=a",
        "escolha: Questão 1|O ____ mia.|*gato -sol;leia: Questão 2|Só um texto.;leia: Questão 3|Pi?;leia: Questão "
        "4|Redija",
        "5 nao-entendido,7 margem,7 sem-resposta,9 sem-resposta,11 chave");
    row("GIFT: HTML, a category", "$CATEGORY: raiz/Frações\n\n[html]<p>Meio &lt; um<br>inteiro?</p> {T}",
        "escolha: Questão 1|Meio < um\\inteiro?|*Verdadeiro -Falso", "");
    row("a sheet with its answers below each question",
        "Exercícios de ciências\n1) Quem mia?\na) cão\nb) gato\nGabarito: b\n2. Quantas patas?\nResposta: 4 ou "
        "quatro.\n",
        "escolha: Questão 1|Quem mia?|-cão *gato;escreva: Questão 2|Quantas patas?|=4/quatro", "");
    row("a sheet with a list at the end, and what word processors add",
        "Escola: ____\nNome: ____\n1)\u00A0Marque os\u00AD animais\na)\u00A0pato\nb) mesa\nc) sa-\n po\n2) Maior?\n(A) "
        "1\n(B) 2\nGABARITO\n1-a 2) B; 3.c\n",
        "escolha: Questão 1|Marque os animais|*pato -mesa -sa- po;escolha: Questão 2|Maior?|-1 *2",
        "2 nao-entendido,12 gabarito");
    row("a sheet: two right ones, the text of an option, none",
        "1) x\na) um\nb) dois\nc) três\nGabarito: a e c\n2) y\na) sim\nb) não\nResposta: não\n3) z\na) p\nb) "
        "q\nGabarito: d\n4) w\n",
        "marque: Questão 1|x|*um -dois *três;escolha: Questão 2|y|-sim *não;escolha: Questão 3|z|-p -q;leia: Questão "
        "4|w",
        "10 sem-certa,13 letra,14 sem-resposta");
    row("nothing", "só um texto\n", "", "1 nao-entendido,1 vazio");
}

/// One line an Aula: "kind: name|text|options|praise|hint".
static QString shown(const AulaSource &aula)
{
    QStringList parts{kindWord(aula.kind) + ": " + aula.nome.text, aula.paginas.front().texto.text};
    QStringList options;
    for (const OptionSource &each : aula.opcoes)
        options += (each.certa ? '*' : '-') + each.texto.text;
    if (aula.resposta.given)
        options += '=' + QString(aula.resposta.text).replace('|', '/');
    parts += {options.join(' '), aula.elogio.text, aula.dica.text};
    while (parts.last().isEmpty())
        parts.removeLast();
    return parts.join('|').replace("\r\n", "\\");
}

void TstImporta::questions()
{
    QFETCH(QString, text);
    QFETCH(QString, aulas);
    QFETCH(QString, told);
    const Imported got = importQuestions(importFormOf(text), text, {"f.txt", "Nome", "7"});
    QStringList lessons, findings;
    for (const ItemSource &item : got.source.items) {
        if (const auto *aula = std::get_if<AulaSource>(&item); aula && aula->nome.text != "Fim")
            lessons += shown(*aula);
    }
    for (const Finding &each : got.findings)
        findings += QString::number(each.place.line) + ' ' + each.code;
    QCOMPARE(lessons.join(';'), aulas);
    QCOMPARE(findings.join(','), told);
    if (got.questions == 0)
        return;
    // What is written is a source that can be made, with a page at its end.
    const MadeBlock made = makeBlock(writeSource(got.source), "f.txt", blockFile("F1/0226POF1.EDB"));
    QVERIFY(made.understood);
    QVERIFY(made.findings.empty());
    QVERIFY(made.edb.contains("CODROT:7\r\n"));
}

void TstImporta::anAfternoonOfQuestions()
{
    QString text;
    for (int i = 1; i <= 200; ++i)
        text += QString("Quanto é %1 + 1?\nA. %1\nB. x\nANSWER: A\n").arg(i);
    const QByteArray source = writeSource(importQuestions(ImportForm::Aiken, text, {"f", "Somas", "10"}).source);
    for (const char *roteiro : {"ROTEIRO 10 Somas\n", "ROTEIRO 11 Somas (2)\n", "ROTEIRO 12 Somas (3)\n"})
        QVERIFY2(source.contains(roteiro), roteiro);
    QVERIFY(makeBlock(source, "f", blockFile("F1/0226MAF1.EDB")).understood);
}

void TstImporta::aPhotoLeavesItsPlaceBehind()
{
    const ScratchDir dir;
    reiniciaStartup();
    gConfig.SetaCFG("ZETO_MM=" + dir.at("\\mm") + "\r\n");
    QImage photo(1200, 600, QImage::Format_RGB32);
    photo.fill(Qt::red);
    photo.setText("Description", "Rua das Flores 12");
    QVERIFY(photo.save(dir.native("/foto.jpg")) && photo.save(dir.native("/foto.png")));
    QVERIFY(dir.get("/foto.png").contains("Flores"));
    QString fault;
    const QImage page = figureFrom(dir.native("/foto.png"), FigureUse::Page, fault);
    QCOMPARE(page.size(), QSize(400, 200));
    QCOMPARE(figureFrom(dir.native("/foto.jpg"), FigureUse::Button, fault).size(), QSize(85, 85));
    QCOMPARE(barras(putFigure(page, "PASSEIO", false, fault)), dir.at("\\mm\\Fig\\P\\E\\PASSEIO.BMP"));
    QVERIFY(!dir.get("/mm/Fig/P/E/PASSEIO.BMP").contains("Flores"));
    QCOMPARE(gConfig.N_Fig("PASSEIO"), dir.at("\\mm\\Fig\\P\\E\\PASSEIO.BMP"));
    QVERIFY(putFigure(page, "PASSEIO", false, fault).isEmpty() && fault.startsWith("já existe"));
    for (const char *name : {"", "NOVELETRAS", "a.b", "a-b", "a b", "../x", "con"})
        QVERIFY2(putFigure(page, name, true, fault).isEmpty(), name);
    dir.put("/texto.jpg", "não é uma figura");
    QVERIFY(figureFrom(dir.native("/texto.jpg"), FigureUse::Page, fault).isNull());
}

/// A WAV file: kind, channels, bits, rate, samples, and a name beside the sound.
static QByteArray wav(quint16 kind, quint16 channels, quint16 bits, quint32 rate, const QByteArray &data)
{
    const auto number = [](auto value) {
        const auto little = qToLittleEndian(value);
        return QByteArray(reinterpret_cast<const char *>(&little), sizeof little);
    };
    const QByteArray form = number(kind) + number(channels) + number(rate) + number(quint32(rate * channels * bits / 8))
        + number(quint16(channels * bits / 8)) + number(bits);
    return "RIFF" + number(quint32(0)) + "WAVELIST" + number(quint32(4)) + "Ana " + "fmt " + number(quint32(16)) + form
        + "data" + number(quint32(data.size())) + data;
}

void TstImporta::recordings_data()
{
    const Table<QByteArray, QString, QByteArray> row("bytes", "changes", "samples");
    const QByteArray two("\x01\x00\xff\x7f", 4);
    row("right already", wav(1, 1, 16, 22050, two), "", two);
    row("8 bits", wav(1, 1, 8, 8000, QByteArray("\x80\xff\x00", 3)), "8 bits para 16",
        QByteArray("\0\0\0\x7f\0\x80", 6));
    row("24 bits", wav(1, 1, 24, 8000, QByteArray("\0\0\x40", 3)), "24 bits para 16", QByteArray("\0\x40", 2));
    row("numbers with a point, one of them none", wav(3, 1, 32, 8000, QByteArray("\0\0\x80\x3f\0\0\xc0\x7f", 8)),
        "32 bits para 16", QByteArray("\xff\x7f\0\0", 4));
    row("four channels", wav(1, 4, 16, 8000, QByteArray("\x04\0\x08\0\0\0\0\0", 8)), "4 canais para 1",
        QByteArray("\x03\0", 2));
    row("96,000 samples", wav(1, 1, 16, 96000, QByteArray("\x02\0\x04\0", 4)), "96000 amostras por segundo para 48000",
        QByteArray("\x03\0", 2));
    row("compressed", wav(85, 1, 16, 8000, two),
        "o som é WAV, mas comprimido (tipo 85, 16 bits): grave de novo como PCM de 16 bits", {});
    row("no sound", "ID3\x03",
        "não é um som WAV inteiro. MP3, OGG e M4A não podem ser convertidos aqui: grave de novo em WAV, ou "
        "exporte como \"WAV, PCM de 16 bits\" no programa com que gravou",
        {});
    row("no channel", wav(1, 0, 16, 8000, two), "o arquivo está danificado: 0 canais, 8000 amostras por segundo", {});
    row("eleven minutes", wav(1, 1, 8, 1000, QByteArray(660000, 'x')), "o som tem mais de 10 minutos", {});
}

void TstImporta::recordings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, changes);
    QFETCH(QByteArray, samples);
    QString fault;
    const Recording got = recordingFrom(bytes, fault);
    QCOMPARE(got.wav.isEmpty() ? fault : got.changes, changes);
    QCOMPARE(got.wav.mid(44), samples);
    QVERIFY(!got.wav.contains("Ana"));
}

void TstImporta::whatIsToBeHeard_data()
{
    const Table<QString, QString, int> row("source", "spoken", "unnamed");
    row("a question", "AULA Zeto escolha: Cores\ntexto: Qual?\n* azul\n- @SOL\n- verde\n",
        "V501=Cores. Qual?,V501_1=azul,V501_3=verde", 0);
    row("a book", "AULA Livros leia: Um\ntexto: a\npagina: b\n", "V501=Um. a,V501_2=b", 0);
    row("a story with a question", "AULA Vrel historia: Um\ntexto: a\npagina: b?\n* c\n- d\n",
        "V501=Um. a,V501_1=c,V501_2=d", 1);
}

void TstImporta::whatIsToBeHeard()
{
    QFETCH(QString, source);
    QFETCH(QString, spoken);
    const MadeBlock made =
        makeBlock("tema: t\nobjetivo: o\n\nROTEIRO 5 R\n\n" + source.toUtf8(), "f", blockFile("F1/0226POF1.EDB"));
    QVERIFY(made.understood);
    const QString text = QString::fromLatin1(made.edb);
    int unnamed = 0;
    QStringList got;
    for (const SpokenText &each : spokenTexts(text.section("Linha =", 1).section("\r\n\tTipo", 0, 0), unnamed))
        got += each.name + '=' + each.text.simplified();
    QCOMPARE(got.join(','), spoken);
    QTEST(unnamed, "unnamed");
}

QTEST_MAIN(TstImporta)
#include "tst_importa.moc"
