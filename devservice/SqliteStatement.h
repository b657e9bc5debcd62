#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace merovanta::devservice {

class SqliteDatabase;

/// One statement of a database, which must outlive it. Values are bound in order, columns count from 0.
class SqliteStatement {
 public:
    SqliteStatement(SqliteDatabase& database, std::string_view sql);

    SqliteStatement& bind(std::int64_t value);
    SqliteStatement& bind(std::string_view value);
    SqliteStatement& bind(const std::optional<std::int64_t>& value);

    /// Goes to the next row; false after the last one, and when something went wrong.
    bool next();

    bool isNull(int column) const;
    std::int64_t integer(int column) const;
    std::string text(int column) const;

 private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    void check(int result);

    SqliteDatabase& database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
    int bound_ = 0;
};

}  // namespace merovanta::devservice
