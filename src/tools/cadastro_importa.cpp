#include "tools/cadastro_importa.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "startup/texto_util.h"

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

static void importLine(const QStringList &fields, QVariant &classe)
{
    QString name = fields.value(1).trimmed();
    if (fields[0] == "aluno"_L1)
        name = name.remove(u'\'').trimmed(); // searches put a pupil's name between apostrophes
    if (name.isEmpty())
        throw ErroBD(kErroArmazem, u"falta o nome"_s);
    if (fields[0] == "classe"_L1) {
        if (fields.value(3).size() > kMaxSenha)
            throw ErroBD(kErroArmazem, u"a senha tem mais de %1 caracteres"_s.arg(kMaxSenha));
        classe = addRow(
            u"rsClasses"_s, {{u"CL_Nome"_s, name}, {u"CL_Prof"_s, fields.value(2)}, {u"CL_Senha"_s, fields.value(3)}});
    } else if (fields[0] == "aluno"_L1 && classe.isValid()) {
        const QVariant aluno = addRow(u"rsAlunos"_s, {{u"AL_Nome"_s, name}});
        addRow(u"rsClxAl"_s, {{u"AL_Cod"_s, aluno}, {u"CL_Cod"_s, classe}, {u"CLxAL_DataIngr"_s, agora()}});
    } else {
        throw ErroBD(kErroArmazem, u"a linha não é uma classe, nem um aluno abaixo de uma classe"_s);
    }
}

void importa(const QString &cadastro, const QString &lista)
{
    if (!gTexto.ArquivoExiste(lista))
        throw ErroBD(kErroArmazem, u"A lista não foi encontrada."_s);
    criaBD();
    gBD->Source(cadastro);
    CriaGenericos();
    gBD->TransacaoInicio();
    QVariant classe;
    const QStringList lines = gTexto.LeArquivo(lista).split(u'\n');
    for (int number = 1; const QString &each : lines) {
        const QString line = each.trimmed();
        try {
            if (!line.isEmpty() && !line.startsWith(u';'))
                importLine(line.split(u'\t'), classe);
        } catch (const ErroBD &erro) {
            gBD->TransacaoCancela();
            throw ErroBD(kErroArmazem, u"linha %1: %2"_s.arg(number).arg(erro.descricao()));
        }
        ++number;
    }
    gBD->TransacaoFim();
}

} // namespace quorel::cadastro
