#pragma once

#include <QByteArray>

namespace quorel {

/// The statements of schema.sql, UTF-8: the tables of an empty register.
QByteArray registerSchema();

} // namespace quorel
