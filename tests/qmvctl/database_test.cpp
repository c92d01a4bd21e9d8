#include "database.h"

#include "command_test.h"

namespace qmvctl::test {
namespace {

class TransactionTest : public CommandTest {
 protected:
  TransactionTest() {
    on_database({"init"});
    sql("insert into sel (RecordID) values (1);");
  }
};

TEST_F(TransactionTest, IsRolledBackUnlessCommitted) {
  Database connection = Database::open(database());
  {
    Transaction transaction(connection);
    connection.execute("delete from sel;");
  }
  EXPECT_EQ(sql("select count(*) from sel;"), "1");
}

TEST_F(TransactionTest, StaysWhenCommitted) {
  Database connection = Database::open(database());
  {
    Transaction transaction(connection);
    connection.execute("delete from sel;");
    transaction.commit();
  }
  EXPECT_EQ(sql("select count(*) from sel;"), "0");
}

TEST_F(TransactionTest, FailingStatementNamesTheFile) {
  Database connection = Database::open(database());
  try {
    connection.execute("delete from nowhere;");
    FAIL() << "the statement succeeded";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(), database() + ": no such table: nowhere");
  }
}

}  // namespace
}  // namespace qmvctl::test
