#include "SqliteStatement.h"

#include <sqlite3.h>

#include "SqliteDatabase.h"

namespace merovanta::devservice {

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(SqliteDatabase& database, std::string_view sql) : database_(database) {
    if (database.failed()) return;
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(database.handle_.get(), sql.data(), static_cast<int>(sql.size()), &statement,
                             nullptr));
    statement_.reset(statement);
}

SqliteStatement& SqliteStatement::bind(std::int64_t value) {
    if (statement_) check(sqlite3_bind_int64(statement_.get(), ++bound_, value));
    return *this;
}

SqliteStatement& SqliteStatement::bind(std::string_view value) {
    if (statement_) {
        check(sqlite3_bind_text64(statement_.get(), ++bound_, value.data() == nullptr ? "" : value.data(),
                                  value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    }
    return *this;
}

SqliteStatement& SqliteStatement::bind(const std::optional<std::int64_t>& value) {
    if (value) return bind(*value);
    if (statement_) check(sqlite3_bind_null(statement_.get(), ++bound_));
    return *this;
}

bool SqliteStatement::next() {
    if (!statement_ || database_.failed()) return false;
    const int result = sqlite3_step(statement_.get());
    if (result == SQLITE_ROW) return true;
    check(result == SQLITE_DONE ? SQLITE_OK : result);
    return false;
}

bool SqliteStatement::isNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::int64_t SqliteStatement::integer(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

std::string SqliteStatement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
    return bytes == nullptr ? std::string() : std::string(bytes, length);
}

void SqliteStatement::check(int result) {
    if (result != SQLITE_OK) database_.failLast();
}

}  // namespace merovanta::devservice
