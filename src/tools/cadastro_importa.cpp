#include "tools/cadastro_importa.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "startup/texto_util.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace quorel::cadastro {

static constexpr int kMaxSenha = 8; ///< characters that the password boxes take

/// The code of the row just added: its key is the first field, and the row is still current. Not by gBD, which goes on
/// after a failure: pupils would go to the class before the one that could not be written. @throws ErroBD
static QVariant addRow(const QString &alias, const QList<std::pair<QString, QVariant>> &values)
{
    const auto set = gBD->GetRecordSet(alias);
    set->AddNew();
    for (const auto &[field, value] : values)
        set->setValue(field, value);
    set->Update();
    return set->value(0);
}

/// One run over a list: where it is, and what came of it.
class Importacao final
{
public:
    Importacao();
    /// @return what is wrong with the line; empty when it was added @throws ErroBD when the register is at fault
    QString line(int number, const QStringList &fields);
    const Importado &result() const { return mResult; }

private:
    void addClass(const QString &name, const QStringList &fields);
    void addPupil(const QString &name);
    void noteName(QSet<QString> &known, const QString &kind, const QString &name);

    Importado mResult;
    QVariant mClasse; ///< code of the class above
    QSet<QString> mClasses; ///< names that are there, as sameName() makes them
    QSet<QString> mAlunos;
    int mNumber = 0; ///< of the line
};

/// One spelling for all names that the register takes for the same.
static QString sameName(const QString &name)
{
    return name.simplified().toCaseFolded();
}

static QSet<QString> namesOf(const QString &alias, const QString &field)
{
    QSet<QString> names;
    const auto set = gBD->GetRecordSet(alias);
    if (set->RecordCount() > 0)
        set->MoveFirst();
    for (; !set->EOF_(); set->MoveNext())
        names << sameName(set->value(field).toString());
    return names;
}

Importacao::Importacao()
    : mClasses(namesOf(u"rsClasses"_s, u"CL_Nome"_s)), mAlunos(namesOf(u"rsAlunos"_s, u"AL_Nome"_s))
{ }

void Importacao::noteName(QSet<QString> &known, const QString &kind, const QString &name)
{
    if (known.contains(sameName(name)))
        mResult.repetidos << u"linha %1: %2 \"%3\" já estava lá"_s.arg(mNumber).arg(kind, name);
    known << sameName(name);
}

void Importacao::addClass(const QString &name, const QStringList &fields)
{
    noteName(mClasses, u"a classe"_s, name);
    mClasse = addRow(
        u"rsClasses"_s, {{u"CL_Nome"_s, name}, {u"CL_Prof"_s, fields.value(2)}, {u"CL_Senha"_s, fields.value(3)}});
    ++mResult.classes;
}

void Importacao::addPupil(const QString &name)
{
    noteName(mAlunos, u"o nome de aluno"_s, name);
    const QVariant aluno = addRow(u"rsAlunos"_s, {{u"AL_Nome"_s, name}});
    addRow(u"rsClxAl"_s, {{u"AL_Cod"_s, aluno}, {u"CL_Cod"_s, mClasse}, {u"CLxAL_DataIngr"_s, agora()}});
    ++mResult.alunos;
}

QString Importacao::line(int number, const QStringList &fields)
{
    mNumber = number;
    const bool isClass = fields[0] == "classe"_L1;
    const bool isPupil = fields[0] == "aluno"_L1;
    QString name = fields.value(1).trimmed();
    if (isPupil)
        name = name.remove(u'\'').trimmed(); // searches put a pupil's name between apostrophes
    if (name.isEmpty())
        return u"falta o nome"_s;
    if (isClass && fields.value(3).size() > kMaxSenha)
        return u"a senha tem mais de %1 caracteres"_s.arg(kMaxSenha);
    if (isClass)
        addClass(name, fields);
    else if (isPupil && mClasse.isValid())
        addPupil(name);
    else
        return u"a linha não é uma classe, nem um aluno abaixo de uma classe"_s;
    return {};
}

/// Adds all lines. @return what is wrong with the first bad one, with its number @throws ErroBD
static QString importLines(Importacao &importacao, const QStringList &lines)
{
    for (int number = 1; const QString &each : lines) {
        const QString line = each.trimmed();
        const bool counts = !line.isEmpty() && !line.startsWith(u';');
        const QString fault = counts ? importacao.line(number, line.split(u'\t')) : QString();
        if (!fault.isEmpty())
            return u"linha %1: %2"_s.arg(number).arg(fault);
        ++number;
    }
    return {};
}

Importado importa(const QString &cadastro, const QString &lista)
{
    if (!gTexto.ArquivoExiste(lista))
        throw ErroBD(kErroArmazem, u"A lista não foi encontrada."_s, lista);
    const QString text = decodeForeign(gTexto.LeBytes(lista));
    if (text.trimmed().isEmpty())
        throw ErroBD(kErroArmazem, u"A lista está vazia ou não pôde ser lida."_s, lista);
    criaBD();
    gBD->Source(cadastro);
    CriaGenericos();
    gBD->TransacaoInicio();
    Importacao importacao;
    const QString fault = importLines(importacao, text.split(u'\n'));
    if (!fault.isEmpty()) {
        gBD->TransacaoCancela();
        throw ErroBD(kErroArmazem, fault, lista);
    }
    gBD->TransacaoFim();
    return importacao.result();
}

} // namespace quorel::cadastro
