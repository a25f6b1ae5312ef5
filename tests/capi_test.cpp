// The sixteen exported functions, through the shared library as a host has it.
#include "client/capi/zant_c.h"

#include <cstring>

#include "enginetest.h"

namespace {

class CInterfaceTest : public EngineTest {
protected:
    void TearDown() override { ZantLibraryUnload(); }
};

TEST_F(CInterfaceTest, AnswersWithoutAnEngineAndLoadsNone) {
    EXPECT_EQ(ZantGetHostVersion(), 3000);
    EXPECT_EQ(ZantGetLibApiVersion(), 0);
    EXPECT_EQ(ZantGetInfoInt(7), 0);
    EXPECT_EQ(ZantGetInfoString(100), nullptr);
    ZantLibraryReleaseInstance(nullptr);
    ZantReleaseProto(nullptr);
    EXPECT_EQ(ZantCreateDirectProto(nullptr), nullptr);
    ZantLibraryUnload();
    EXPECT_TRUE(probe().calls.empty());
}

TEST_F(CInterfaceTest, AnExplicitLoadOutlivesTheInstances) {
    EXPECT_EQ(ZantLibraryLoad("/nowhere/"), 0);
    EXPECT_EQ(ZantLibraryLoad(engine("probe").c_str()), 1);
    EXPECT_EQ(ZantLibraryLoad("/nowhere/"), 1);
    EXPECT_EQ(ZantGetLibApiVersion(), 17);
    EXPECT_EQ(ZantGetInfoInt(7), 7);
    EXPECT_STREQ(ZantGetInfoString(1), "information");
    ZantLibraryReleaseInstance(ZantLibraryCreateInstance());
    EXPECT_EQ(ZantGetLibApiVersion(), 17);
    ZantLibraryUnload();
    EXPECT_EQ(ZantGetLibApiVersion(), 0);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createInstance 1", "destroyInstance 1", "exit"}));
}

TEST_F(CInterfaceTest, WithoutAnExplicitLoadTheLastInstanceTakesTheEngineAlong) {
    ASSERT_EQ(ZantLibraryLoad(engine("probe").c_str()), 1);
    ZantLibraryUnload();
    ZantInstance* const instance = ZantLibraryCreateInstance();
    ASSERT_NE(instance, nullptr) << "from the directory that was set";
    ZantLibraryReleaseInstance(instance);
    EXPECT_EQ(ZantGetLibApiVersion(), 0);
    EXPECT_FALSE(isOpen(engine("probe")));
}

TEST_F(CInterfaceTest, AFailedLoadIsExplicitAllTheSame) {
    ASSERT_EQ(ZantLibraryLoad("/nowhere/"), 0);
    EXPECT_EQ(ZantLibraryCreateInstance(), nullptr);
    EXPECT_EQ(ZantLibraryLoad(engine("refuses").c_str()), 1);
    EXPECT_EQ(ZantLibraryCreateInstance(), nullptr);
    EXPECT_EQ(ZantLibraryCreateInstanceWithEventHandler([](ZantEventData*) {}, nullptr), nullptr);
    EXPECT_EQ(ZantGetLibApiVersion(), 17);
}

class CInstanceTest : public CInterfaceTest {
protected:
    void SetUp() override {
        CInterfaceTest::SetUp();
        ASSERT_EQ(ZantLibraryLoad(engine("probe").c_str()), 1);
        ZantLibraryCreateInstance();
        instance = ZantLibraryCreateInstance();
        ASSERT_NE(instance, nullptr);
        probe().take();
    }
    ZantInstance* instance = nullptr;
    char object[1];
};

TEST_F(CInstanceTest, ParsesText) {
    probe().onParse = [](const std::string&) { return 42; };
    EXPECT_EQ(ZantInstanceParse(instance, "fg reset;", "a source"), 42);
    EXPECT_EQ(ZantInstanceParse(instance, "", nullptr), 42);
    EXPECT_EQ(probe().take(), Calls({"parse 2 \"fg reset;\" \"a source\" 0", "parse 2 \"\" null 0"}));
}

TEST_F(CInstanceTest, FindsObjects) {
    probe().onFindObject = [this](const std::string&, void* record) {
        std::memset(record, 0xFF, 8);
        return object;
    };
    EXPECT_EQ(ZantInstanceGetObjectByName(instance, "ball", HandleMesh), object);
    EXPECT_EQ(probe().take(), Calls({"findObject 2 \"ball\" 6 null"}));
}

TEST_F(CInstanceTest, ReadsValues) {
    probe().onGetValue = [this](void* handle, ZantParserExchangeBuffer& record) {
        EXPECT_EQ(handle, object);
        if (record.type == ZantValueString)
            record.value.string = "a string";
        else
            record.value.number = 2.5;
        return -9;
    };
    ZantParserExchangeBuffer record{};
    record.type = ZantValueNumber;
    EXPECT_EQ(ZantInstanceGetSymbolValue(instance, object, &record), -9);
    EXPECT_EQ(record.value.number, 2.5);
    EXPECT_STREQ(ZantInstanceGetStringSymbolValue(instance, object), "a string");
    EXPECT_EQ(probe().take(), Calls({"getValue 2 2", "getValue 2 1"}));
}

TEST_F(CInstanceTest, AHostFunctionGivesEventsBack) {
    static ZantEventData* served = nullptr;
    served = nullptr;
    ZantLibraryUnload();
    ASSERT_EQ(ZantLibraryLoad(engine("raises_events").c_str()), 1);
    probe().onSendBack = [this](ZantEventData& event) { event.handle = object; };
    ASSERT_NE(ZantLibraryCreateInstanceWithEventHandler(
                  [](ZantEventData* event) {
                      served = event;
                      EXPECT_EQ(ZantInstanceSendBackEvent(event), 11);
                  },
                  nullptr),
              nullptr);
    EXPECT_NE(served, nullptr);
    ASSERT_EQ(probe().sentBack.size(), 2u);
    EXPECT_EQ(probe().sentBack[1].handle, object);
    EXPECT_STREQ(probe().sentBack[1].text, "created");
    EXPECT_EQ(probe().sentBackOn[1], 3);
    probe().onSendBack = nullptr;
}

}  // namespace
