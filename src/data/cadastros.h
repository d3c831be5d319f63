#pragma once

namespace quorel {

/// Opens the register through gBD, makes sure of the generic rows and opens the tables that every window uses. Looks
/// in the configuration's ZETO_CAD first, then, when DIRWIN has no value, in the Windows directory. Without a register
/// it shows a box and opens nothing; any failure ends it with a box. A register that was in use for too long is opened
/// as a whole when it is needed next.
void AbreBDAlunos();

/// Opens the three tables and adds class, pupil and link 9999 where they are missing. @throws ErroBD from opening
void CriaGenericos();

/// Opens pupils and classes in the order of their names, as rsAlunos and rsClasses. @throws ErroBD
void AbreTabelasCadastro();

/// Copies a register on read-only media to the Windows directory, for the next start, and points ZETO_CAD there in
/// memory. The connection stays on the file that is open. Failures are shown in boxes.
void CopiaCadastros();

} // namespace quorel
