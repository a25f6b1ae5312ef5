// The life of instances: creating, refusing, listing, routing and releasing, against real engine modules.
#include "client/engine/instance.h"

#include <algorithm>
#include <stdexcept>

#include "client/events/eventlistener.h"
#include "client/listeners/dispatch.h"
#include "client/listeners/linkedlisteners.h"
#include "enginetest.h"

using namespace Zant;

namespace {

// Notes its calls among those of the engine, so that the order of both is seen.
class NotingListener : public EventListener {
public:
    explicit NotingListener(std::string name = "listener") : name_(std::move(name)) {}

    void activate(Instance* instance) override {
        EXPECT_EQ(instance->listener, this);
        EXPECT_EQ(instance->eventFunction, zant_cpp_handler);
        note("activate");
    }
    void deactivate(Instance* instance) override {
        EXPECT_EQ(instance->listener, this) << "still in its place";
        note("deactivate");
    }
    void* createTextStream() override {
        note("createTextStream");
        return this;
    }
    void destroyTextStream(void* stream) override {
        EXPECT_EQ(stream, this);
        note("destroyTextStream");
    }
    void textLine(void* stream, const char* text) override {
        EXPECT_EQ(stream, this);
        note(std::string("textLine ") + text);
    }

private:
    void note(const std::string& call) { zantTestProbe()->note(name_ + ' ' + call); }
    std::string name_;
};

class InstanceTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        library.setLibraryDir(engine("probe").c_str());
    }
    // The numbers that the engine gave the listed instances, in the order of the list.
    std::vector<int> listed() const {
        std::vector<int> numbers;
        for (const Instance* i = library.instanceList; i; i = i->next)
            numbers.push_back(*static_cast<int*>(i->parserContext));
        return numbers;
    }
    Library library{nullptr};
};

TEST_F(InstanceTest, TheFirstLoadsTheEngineAndTheLastUnloadsIt) {
    Instance* const instance = library.createInstance();
    ASSERT_NE(instance, nullptr);
    EXPECT_TRUE(library.hasInstances());
    EXPECT_EQ(instance->library, &library);
    EXPECT_EQ(instance->libraryTable, library.vtables.library);
    library.releaseInstance(instance);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createInstance 1", "destroyInstance 1", "exit"}));
    EXPECT_FALSE(isOpen(engine("probe")));
    library.releaseInstance(nullptr);
    EXPECT_TRUE(probe().calls.empty());
}

TEST_F(InstanceTest, AnExplicitlyLoadedEngineStaysUntilItIsUnloadedExplicitly) {
    ASSERT_TRUE(library.loadExplicitly(nullptr));
    library.releaseInstance(library.createInstance());
    library.release();
    EXPECT_TRUE(library.isLoaded());
    library.createInstance();
    library.createInstance();
    library.unloadExplicitly();
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createInstance 1", "destroyInstance 1", "createInstance 2",
                                     "createInstance 3", "destroyInstance 3", "destroyInstance 2", "exit"}));
    EXPECT_FALSE(library.isLoaded());
    EXPECT_EQ(library.flags, AUTO_UNLOAD);
    ASSERT_NE(library.createInstance(), nullptr) << "after a reload";
}

TEST_F(InstanceTest, AreReleasedInAnyOrder) {
    std::vector<int> order = {1, 2, 3};
    int orders = 0;
    do {
        Instance* instances[] = {nullptr, library.createInstance(), library.createInstance(), library.createInstance()};
        EXPECT_EQ(listed(), std::vector<int>({3, 2, 1}));
        std::vector<int> left = {3, 2, 1};
        for (int number : order) {
            library.releaseInstance(instances[number]);
            left.erase(std::find(left.begin(), left.end(), number));
            EXPECT_EQ(listed(), left);
            EXPECT_EQ(library.isLoaded(), !left.empty());
        }
        probe().instances = 0;
        ++orders;
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_EQ(orders, 6);
}

TEST_F(InstanceTest, ARefusedOneIsDestroyedAtOnce) {
    NotingListener listener;
    library.setLibraryDir(engine("refuses").c_str());
    const Calls refused = {"init 3000", "listener activate", "refuse", "destroyInstance null", "listener deactivate",
                           "exit"};
    EXPECT_EQ(library.createInstanceWithListner(&listener), nullptr);
    EXPECT_EQ(probe().take(), refused);
    EXPECT_FALSE(isOpen(engine("refuses")));

    EXPECT_EQ(library.createInstance(), nullptr);
    EXPECT_EQ(library.createInstanceWithHandler(zant_null_handler, nullptr), nullptr);
    EXPECT_EQ(probe().exits.size(), 3u);

    ASSERT_TRUE(library.loadExplicitly(nullptr));
    EXPECT_EQ(library.createInstance(), nullptr);
    EXPECT_STREQ(library.getLoadError(), "the engine refused to create an instance");
    EXPECT_TRUE(library.isLoaded());
    library.unloadExplicitly();
}

TEST_F(InstanceTest, TheEngineIsAskedForItsVersionOnce) {
    ASSERT_TRUE(library.loadExplicitly(nullptr));
    probe().versionAsked = 0;
    library.createInstance();
    EXPECT_EQ(probe().versionAsked, 1);
    library.unloadExplicitly();
}

TEST_F(InstanceTest, OneThatIsListedWhileTheLastOneGoesSharesTheEnginesFate) {
    Instance* const last = library.createInstance();
    library.setupInstanceMutex();
    probe().onUnlock = [this] { library.initInstance(library.allocInstance()); };
    library.releaseInstance(last);
    EXPECT_EQ(listed(), std::vector<int>());
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createInstance 1", "createMutex", "destroyInstance 1",
                                     "createInstance 2", "destroyInstance 2", "destroyMutex", "exit"}));
    // An engine that was loaded explicitly stays, and so does the instance.
    ASSERT_TRUE(library.loadExplicitly(nullptr));
    Instance* const other = library.createInstance();
    library.setupInstanceMutex();
    probe().onUnlock = [this] { library.initInstance(library.allocInstance()); };
    library.releaseInstance(other);
    EXPECT_EQ(listed().size(), 1u);
    library.unloadExplicitly();
}

TEST_F(InstanceTest, OneWhoseListenerThrowsIsDestroyed) {
    struct Throwing : EventListener {
        void activate(Instance*) override { throw std::runtime_error("activate"); }
    } listener;
    EXPECT_THROW(library.createInstanceWithListner(&listener), std::runtime_error);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "destroyInstance null", "exit"}));
    EXPECT_FALSE(isOpen(engine("probe")));
}

TEST_F(InstanceTest, AnEngineStaysOpenForThemWhenItsVersionTurns0) {
    ASSERT_TRUE(library.loadExplicitly(engine("debug_only").c_str()));
    Instance* const instance = library.createInstance();
    probe().version = 0;
    EXPECT_FALSE(library.load("/nowhere/"));
    EXPECT_TRUE(isOpen(engine("debug_only"), "zant3d"));
    EXPECT_EQ(library.instanceList, instance);
    probe().version = -1;
    library.releaseInstance(instance);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createInstance 1", "destroyInstance 1"}));
    library.unloadExplicitly();

    ASSERT_TRUE(library.loadExplicitly(engine("probe").c_str()));
    probe().version = 0;
    probe().take();
    EXPECT_FALSE(library.load("/nowhere/"));
    EXPECT_EQ(probe().take(), Calls({"exit"})) << "nobody needs it";
    EXPECT_FALSE(isOpen(engine("probe")));
}

TEST_F(InstanceTest, OneThatIsNotListedChangesNothingWhenItGoes) {
    library.createInstance();
    Instance* const unlisted = library.allocInstance();
    EXPECT_EQ(unlisted->parserContext, nullptr);
    EXPECT_EQ(unlisted->userData, nullptr);
    delete unlisted;
    EXPECT_EQ(listed(), std::vector<int>({1}));
    EXPECT_EQ(library.initInstance(nullptr), nullptr);
    EXPECT_EQ(listed(), std::vector<int>({1}));
}

TEST_F(InstanceTest, NoneIsMadeWithoutAnEngine) {
    NotingListener listener;
    library.setLibraryDir("/nowhere/");
    EXPECT_EQ(library.createInstance(), nullptr);
    EXPECT_EQ(library.createInstanceWithListner(&listener), nullptr);
    EXPECT_EQ(library.createInstanceWithHandler(zant_null_handler, nullptr), nullptr);
    EXPECT_TRUE(probe().calls.empty());
}

TEST_F(InstanceTest, EventsOfCreatingAndDestroyingReachTheListener) {
    NotingListener listener;
    library.setLibraryDir(engine("raises_events").c_str());
    Instance* const instance = library.createInstanceWithListner(&listener);
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(probe().take(), Calls({"init 3000", "listener activate", "createInstance 1", "listener createTextStream",
                                     "listener textLine created"}));
    library.releaseInstance(instance);
    EXPECT_EQ(probe().take(), Calls({"destroyInstance 1", "listener textLine destroyed", "listener destroyTextStream",
                                     "listener deactivate", "exit"}));
}

TEST_F(InstanceTest, TheDefaultListenerBouncesEventsOfCreatingAndDestroying) {
    library.setLibraryDir(engine("raises_events").c_str());
    probe().onSendBack = [this](ZantEventData& event) {
        if (event.kind == EventCreateTextStream) event.handle = &library;
    };
    library.releaseInstance(library.createInstance());
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createInstance 1", "sendBackEvent 2", "sendBackEvent 4",
                                     "destroyInstance 1", "sendBackEvent 4", "sendBackEvent 3", "exit"}));
    EXPECT_EQ(probe().sentBack[3].handle, &library);
    EXPECT_EQ(probe().sentBackOn, std::vector<int>({1, 1, 1, 1}));
}

void hostFunction(ZantEventData*) {}

TEST_F(InstanceTest, RoutesEventsAsItIsTold) {
    NotingListener first("first");
    NotingListener second("second");
    Instance* const instance = library.createInstanceWithHandler(hostFunction, &first);
    EXPECT_EQ(instance->eventFunction, hostFunction);
    EXPECT_EQ(instance->userData, &first);
    EXPECT_EQ(instance->listener, nullptr);
    probe().take();

    instance->setEventListener(&first);
    instance->setEventListener(&second);
    EXPECT_EQ(instance->getEventListener(), &second);
    EXPECT_EQ(probe().take(), Calls({"first activate", "first deactivate", "second activate"}));
    EXPECT_EQ(instance->userData, &first) << "left alone";

    instance->setEventListener(nullptr);
    EXPECT_EQ(instance->eventFunction, zant_null_handler);
    EXPECT_EQ(instance->getEventListener(), nullptr);

    instance->setEventListener(&first);
    instance->setEventHandler(hostFunction, &second);
    EXPECT_EQ(instance->eventFunction, hostFunction);
    EXPECT_EQ(instance->listener, nullptr);
    EXPECT_EQ(instance->userData, &second);
    EXPECT_EQ(probe().take(), Calls({"second deactivate", "first activate", "first deactivate"}));

    // Events go back to the engine that made the instance, whatever tables there are by then.
    const LibraryFunctionsVtable none{};
    const LibraryFunctionsVtable* const own = std::exchange(library.vtables.library, &none);
    EventData event{};
    instance->sendBackEvent(&event);
    library.vtables.library = own;
    EXPECT_EQ(probe().take(), Calls({"sendBackEvent 0"}));
}

TEST_F(InstanceTest, KeepsItsDefaultListenerToItselfUntilItEnds) {
    Instance* const instance = library.createInstance();
    auto* const owned = static_cast<BounceBackListener*>(instance->ownedListener);
    ASSERT_NE(owned, nullptr);
    EXPECT_EQ(instance->listener, owned);
    EXPECT_EQ(instance->getEventListener(), nullptr);
    EXPECT_EQ(owned->instance, instance);

    instance->setEventHandler(hostFunction, nullptr);
    EXPECT_EQ(instance->ownedListener, owned);
    EXPECT_EQ(owned->instance, nullptr);
    instance->setDefaultEventListener();
    EXPECT_EQ(instance->ownedListener, owned) << "there is only one";
    EXPECT_EQ(owned->instance, instance);

    Instance* const dropsAll = library.createInstanceWithListner(nullptr);
    EXPECT_EQ(dropsAll->eventFunction, zant_null_handler);
    EXPECT_EQ(dropsAll->ownedListener, nullptr);
}

TEST_F(InstanceTest, TheMutexIsDestroyedOnceOnEveryPath) {
    {
        Library ended(engine("probe").c_str());
        ASSERT_TRUE(ended.loadExplicitly(nullptr));
        ended.setupInstanceMutex();
    }
    EXPECT_EQ(probe().take(), Calls({"init 3000", "createMutex", "destroyMutex"}));
}

}  // namespace
