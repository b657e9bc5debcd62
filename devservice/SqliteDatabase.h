#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;

namespace merovanta::devservice {

class SqliteStatement;

/// A database file. Errors are values: the first one is kept until it is taken, and until then everything
/// else does nothing, so that a row of steps is checked once at its end.
class SqliteDatabase {
 public:
    /// Opens the file, made if there is none, for this process alone; what goes wrong is a problem like any.
    void open(const std::filesystem::path& file);
    void close() { handle_.reset(); }
    bool isOpen() const { return handle_ != nullptr; }

    /// A statement whose values are still to be bound.
    SqliteStatement prepare(std::string_view sql);
    /// Runs a statement with these values.
    template <typename... Values>
    void run(std::string_view sql, const Values&... values);

    /// Statements from here on are one transaction, if there is none already.
    void begin();
    void commit();
    void rollback();
    bool inTransaction() const;

    std::int64_t lastId() const;
    /// How many rows the last statement changed.
    int changes() const;

    bool failed() const { return problem_.has_value(); }
    /// As if the database had failed with this, for what must go together with it.
    void fail(std::string problem);
    /// What went wrong since it was last asked, if anything.
    std::optional<std::string> takeProblem();

 private:
    friend class SqliteStatement;
    struct Close {
        void operator()(sqlite3* handle) const;
    };
    /// Keeps what the last call of the library complained about.
    void failLast();

    std::unique_ptr<sqlite3, Close> handle_;
    std::optional<std::string> problem_;
};

}  // namespace merovanta::devservice

#include "SqliteStatement.h"

namespace merovanta::devservice {

template <typename... Values>
void SqliteDatabase::run(std::string_view sql, const Values&... values) {
    SqliteStatement statement = prepare(sql);
    (statement.bind(values), ...);
    while (statement.next()) {
    }
}

}  // namespace merovanta::devservice
