#pragma once

#include <QByteArray>

namespace quorel {

/// The statements of schema.sql, UTF-8: the tables of an empty register.
QByteArray registerSchema();

/// The statements of schema_nosso.sql: our tables beside those, where they are missing.
QByteArray ownSchema();

} // namespace quorel
