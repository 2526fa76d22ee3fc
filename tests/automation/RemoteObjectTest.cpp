#include "tests/automation/ServerProcess.h"
#include "tests/support/Failures.h"
#include "tests/support/TemporaryFolder.h"

#include <bit>
#include <cmath>
#include <csignal>
#include <fstream>
#include <limits>
#include <thread>
#include <unistd.h>

namespace zn::test {

using namespace std::chrono_literals;
using automation::ServeEnd;
using automation::SocketRunningObjects;

namespace {

class RecordingSink : public EventSink {
public:
    Status onEvent(std::int32_t number, const std::vector<Value>& arguments) override
    {
        return handler ? handler(number, arguments) : S_OK;
    }
    std::function<Status(std::int32_t, const std::vector<Value>&)> handler;
};

class RemoteObjectTest : public ::testing::Test {
protected:
    static DispatchRef connect(SocketRunningObjects& from)
    {
        for (int i = 0; i < 500; ++i) {
            if (auto found = from.lookup(u"Test"))
                return found;
            std::this_thread::sleep_for(10ms);
        }
        throw std::runtime_error("the server did not publish itself");
    }

    TemporaryFolder folder;
    ServerProcess server{folder / "run"};
    std::unique_ptr<SocketRunningObjects> table = std::make_unique<SocketRunningObjects>(
        folder / "run", automation::ClientSession::Limits{.hello = 2500ms, .call = 2500ms});
    DispatchRef root = connect(*table);
};

/// Waits until a thread of this process waits for something itself.
void waitUntilBlocked(pid_t thread)
{
    for (char state = 'R'; state != 'S'; std::this_thread::yield()) {
        std::string word;
        std::ifstream stat("/proc/self/task/" + std::to_string(thread) + "/stat");
        stat >> word >> word >> state;
    }
}

TEST_F(RemoteObjectTest, AnObjectSaysWhatItOffersWithoutBeingCalled)
{
    EXPECT_EQ(root->facilities(), (std::vector<Text>{u"Echoing", u"Größe"}));
}

TEST_F(RemoteObjectTest, ValuesOfEveryTypeSurviveExactly)
{
    const Value values[] = {Value(), Value(NullValue{}), Value(std::int16_t{-32768}),
        Value(std::numeric_limits<std::int32_t>::min()), Value(std::numeric_limits<std::int64_t>::max()),
        Value(std::int64_t{9007199254740993}), Value(std::uint8_t{255}), Value(0.1F), Value(0.1), Value(-0.0),
        Value(5e-324), Value(std::numeric_limits<double>::infinity()), Value(CurrencyValue{-922337203685477580}),
        Value(DateValue{43164.088298611112}), Value(ErrorValue{E_FAIL}), Value(true), Value(BooleanValue{2}),
        Value(u""), Value(Text(u"a\0\"\\\n\u20AC\U0001F600\0", 9)), Value(Text{u'x', 0xDC00, u'y', 0xD800}),
        Value(ObjectRef())};
    for (const Value& value : values) {
        const Value back = root->call(u"Echo", {value});
        EXPECT_TRUE(back == value) << "value " << (&value - values);
        if (const double* number = value.get<double>()) {
            EXPECT_EQ(std::bit_cast<std::uint64_t>(*back.get<double>()), std::bit_cast<std::uint64_t>(*number));
        }
    }
    EXPECT_TRUE(std::isnan(*root->call(u"Echo", {Value(std::nan(""))}).get<double>()));
}

TEST_F(RemoteObjectTest, ArraysKeepBoundsAndComeBackChangedInPlace)
{
    auto array = std::make_shared<ValueArray>();
    array->elementType = ValueType::String;
    array->bounds = {{-1, 2}, {5, 1}};
    array->elements = {Value(u"first"), Value::arrayOf({Value(1), Value()})};
    MemberCall call{u"Fill", MemberUse::Call, {Value(array)}, {}};
    root->invoke(call);
    const ArrayRef back = *call.arguments[0].get<ArrayRef>();
    EXPECT_EQ(back->elementType, ValueType::String);
    EXPECT_EQ(back->bounds[0].lower, -1);
    EXPECT_EQ(back->bounds[1].lower, 5);
    EXPECT_EQ(back->elements[0], Value(u"first"));
    EXPECT_EQ(back->elements[1], Value(u"filled"));
}

TEST_F(RemoteObjectTest, ArgumentsNamesFailuresAndIdentityTravel)
{
    MemberCall swap{u"Swap", MemberUse::Call, {Value(1), Value(u"two")}, {u"Named"}};
    EXPECT_EQ(root->invoke(swap), Value(1));
    EXPECT_EQ(swap.arguments, (std::vector<Value>{Value(u"two"), Value(1)}));

    const Raised raised = raisedBy([&] { root->call(u"Fail"); });
    EXPECT_EQ(raised.status, DISP_E_BADINDEX);
    EXPECT_EQ(raised.sentence, "There is no such configuration: \xD0\x96.");

    auto child = query<DispatchObject>(root->call(u"Child").toObject());
    EXPECT_EQ(child->typeName(), u"Counterpart");
    EXPECT_EQ(root->call(u"Child").toObject(), child) << "one object, one proxy";
    EXPECT_TRUE(root->call(u"IsChild", {Value(child)}).toBool());
    EXPECT_TRUE(root->call(u"ChildIsHeld").toBool());
    child.reset();
    EXPECT_FALSE(root->call(u"ChildIsHeld").toBool()) << "the server holds what the client has let go";
    EXPECT_EQ(statusOf([&] { root->call(u"Echo", {Value(std::make_shared<Counterpart>())}); }), DISP_E_TYPEMISMATCH);
}

TEST_F(RemoteObjectTest, EventsAreServedInsideTheCallAndMayCallBack)
{
    const auto sink = std::make_shared<RecordingSink>();
    std::vector<Text> seen;
    sink->handler = [&](std::int32_t number, const std::vector<Value>& arguments) {
        seen.push_back(numberText(number) + u" " + arguments.at(0).toText());
        seen.push_back(root->call(u"Echo", {Value(u"inner")}).toText());
        return Status{42};
    };
    EXPECT_EQ(statusOf([&] { root->advise(u"OtherEvents", sink); }), E_NOINTERFACE);
    const auto cookie = root->advise(u"Events", sink);
    EXPECT_EQ(root->call(u"Fire", {Value(u"Z:\\a.stl")}), Value(42));
    EXPECT_EQ(seen, (std::vector<Text>{u"7 Z:\\a.stl", u"inner"}));

    sink->handler = [](std::int32_t, const std::vector<Value>&) -> Status { throw std::bad_alloc(); };
    EXPECT_EQ(root->call(u"Fire", {Value(1)}), Value(E_OUTOFMEMORY)) << "a failing sink is a status, not an end";

    root->unadvise(cookie);
    root->unadvise(cookie);
    EXPECT_EQ(root->call(u"Fire", {Value(1)}), Value(E_FAIL));
}

TEST_F(RemoteObjectTest, TooBigACallFailsAloneAndTheConnectionLives)
{
    const Text big(std::size_t{17} << 20, u'x');
    EXPECT_EQ(statusOf([&] { root->call(u"Echo", {Value(big)}); }), E_INVALIDARG);
    const Text fitting(std::size_t{1} << 19, u'y');
    EXPECT_EQ(root->call(u"Echo", {Value(fitting)}).toText(), fitting);
}

TEST_F(RemoteObjectTest, ThePeersDeathIsToldAtOnceAndLookedUpNoMore)
{
    EXPECT_EQ(table->lookup(u"Test"), root) << "looked up twice, one object";
    EXPECT_EQ(statusOf([&] { root->call(u"RunMacro2"); }), RPC_E_DISCONNECTED);
    EXPECT_EQ(statusOf([&] { root->call(u"Echo", {Value(1)}); }), RPC_E_DISCONNECTED);
    EXPECT_EQ(server.wait(), 128 + SIGKILL);
    EXPECT_EQ(table->lookup(u"Test"), nullptr);
}

TEST_F(RemoteObjectTest, TheServerEndsWithItsClient)
{
    root.reset();
    table.reset();
    EXPECT_EQ(server.wait(), static_cast<int>(ServeEnd::ClientGone));
}

TEST_F(RemoteObjectTest, ShortCallsHaveALimitMacrosNoneAndCancellingEndsBoth)
{
    kill(server.id(), SIGSTOP);
    std::thread canceller([this, caller = ::gettid()] {
        waitUntilBlocked(caller);
        table->cancel();
    });
    EXPECT_EQ(statusOf([&] { root->call(u"RunMacro"); }), E_ABORT);
    canceller.join();
    kill(server.id(), SIGCONT);
    EXPECT_EQ(server.wait(), static_cast<int>(ServeEnd::ClientGone));

    ServerProcess slow(folder / "slow");
    SocketRunningObjects impatient(folder / "slow", automation::ClientSession::Limits{.hello = 2500ms, .call = 1ms});
    root = connect(impatient);
    EXPECT_NO_THROW(root->call(u"RunMacro")) << "longer than the limit of short calls";
    kill(slow.id(), SIGSTOP);
    EXPECT_EQ(statusOf([&] { root->call(u"Echo", {Value(1)}); }), automation::RPC_E_TIMEOUT);
}

} // namespace

} // namespace zn::test
