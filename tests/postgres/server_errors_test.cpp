// A server that cannot be reached, a missing database and a connection lost in mid-session
// give DAO numbers through the central handler (message and log), and the next use works.
#include <gtest/gtest.h>

#include "platform/dao/connect.h"
#include "platform/postgres/session.h"
#include "tests/common/common_fixture.h"
#include "tests/support/errors.h"
#include "tests/support/pg_server.h"

namespace cp::testing {
namespace {

class ServerErrors : public CommonTest {
 protected:
  void SetUp() override {
    if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
    CommonTest::SetUp();
  }
};

TEST_F(ServerErrors, OpeningFailuresGiveDaoNumbers) {
  const struct {
    std::string connection;
    long number;
  } cases[] = {
      {"host=/nonexistent-cp-folder user=postgres dbname=cp_c", 3151},  // server down
      {*TestServer() + " dbname=cp_no_such_database", 3024},
      {"postgresql:///cp_c?host=/nonexistent-cp-folder", 3151},
      {*TestServer() + " dbname=cp_c user=cp_secret password=mala", 3029},
  };
  for (const auto& c : cases) {
    const Error e = CaughtError([&] { dao::OpenDatabase(c.connection); });
    EXPECT_EQ(e.number(), c.number) << c.connection << ": " << e.description();
    EXPECT_EQ(e.description().find("mala"), std::string::npos) << "no password in messages";
  }
}

TEST_F(ServerErrors, LostConnectionIsReportedAndTheNextUseReconnects) {
  const std::string connection = CreateServerDatabase("cp_c", false) + " application_name=cp_lost";
  postgres::Session(connection, postgres::Session::Purpose::Tool)
      .Execute("CREATE TABLE zona (idzona integer, nombre varchar(50)); INSERT INTO zona VALUES (1, 'Centro')");
  auto db = dao::OpenDatabase(connection);
  postgres::Session(*TestServer() + " dbname=postgres", postgres::Session::Purpose::Tool)
      .Execute("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name = 'cp_lost'");

  EXPECT_FALSE(Atrapar("Cruzar", [&] { db->OpenRecordset("SELECT Nombre FROM Zona"); }));
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_NE(messenger_->shown()[0].text.find("conexión"), std::string::npos) << messenger_->shown()[0].text;
  EXPECT_NE(Log().find("3151"), std::string::npos) << Log();

  auto rs = db->OpenRecordset("SELECT Nombre FROM Zona");
  EXPECT_EQ(rs.Fields("Nombre").Value(), Variant("Centro"));
}

}  // namespace
}  // namespace cp::testing
