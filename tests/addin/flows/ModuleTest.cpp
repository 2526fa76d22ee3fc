#include "contracts/host/Module.h"
#include "addin/flows/Registration.h"
#include "contracts/host/ArkAddIn.h"
#include "tests/support/TestPlatform.h"

#include <cstdlib>
#include <dlfcn.h>
#include <gtest/gtest.h>

namespace zn {

namespace {

template <class Function> Function symbol(void* library, const char* name)
{
    return reinterpret_cast<Function>(dlsym(library, name));
}

} // namespace

TEST(Module, RegistersItselfAndIsLoadedByItsProgramIdentifier)
{
    test::TestPlatform platform;
    setenv("ARKIN_HOME", (platform.folder / "home").c_str(), 1);
    const std::string library = ZN_BIN_DIR "/libZNTaskAddIn.so";
    void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr) << dlerror();

    ASSERT_EQ(symbol<DllFunction>(handle, dllRegisterServerName)(), S_OK);
    Registry& registry = platform.machine.registry();
    const auto read = [&](const Text& key, const Text& name) {
        const auto value = registry.read(RegistryRoot::Machine, u"SOFTWARE\\Classes\\" + key, name);
        return value ? value->asText().value_or(u"?") : Text(u"none");
    };
    const Text cls = Text(u"CLSID\\") + addInClassId;
    EXPECT_EQ(read(u"ZNTaskAddIn.ZNTaskAddIn\\CLSID", u""), addInClassId);
    EXPECT_EQ(read(u"ZNTaskAddIn.ZNTaskAddIn.1\\CLSID", u""), addInClassId);
    EXPECT_EQ(read(u"ZNTaskAddIn.ZNTaskAddIn.1", u""), u"ZNTaskAddIn Class");
    EXPECT_EQ(read(cls + u"\\InprocServer32", u""), platform.machine.files().fromMachine(library));
    EXPECT_EQ(read(cls + u"\\InprocServer32", u"ThreadingModel"), u"Both");
    EXPECT_EQ(read(cls + u"\\Programmable", u""), u"");

    ObjectRef factory;
    const auto getClass = symbol<DllGetClassObjectFunction>(handle, dllGetClassObjectName);
    EXPECT_EQ(getClass(u"{00000000-0000-0000-0000-000000000000}", &factory), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(getClass(addInClassId, nullptr), E_POINTER);
    ASSERT_EQ(getClass(addInClassId, &factory), S_OK);
    const auto canUnload = symbol<DllFunction>(handle, dllCanUnloadNowName);
    EXPECT_EQ(canUnload(), S_OK);
    ObjectRef object;
    ASSERT_EQ(query<IClassFactory>(factory)->CreateInstance(object), S_OK);
    EXPECT_EQ(canUnload(), S_FALSE);
    EXPECT_NE(query<IArkAddIn5>(object), nullptr);
    object.reset();
    EXPECT_EQ(canUnload(), S_OK);

    EXPECT_EQ(symbol<int (*)()>(handle, "getDPI_OS")(), 96);
    registry.write(RegistryRoot::User, u"Control Panel\\Desktop", u"LogPixels", RegistryValue::number(192));
    EXPECT_EQ(symbol<int (*)()>(handle, "getSystemDPI")(), 192);
    EXPECT_EQ(symbol<int (*)()>(handle, "getToolbarButtonSizeExp")(), 48);
    EXPECT_EQ(symbol<int (*)()>(handle, "getToolbarButtonSizeZN")(), 32);

    ASSERT_EQ(symbol<DllFunction>(handle, dllUnregisterServerName)(), S_OK);
    EXPECT_EQ(read(u"ZNTaskAddIn.ZNTaskAddIn\\CLSID", u""), u"none");
    EXPECT_EQ(read(cls + u"\\InprocServer32", u""), u"none");
    EXPECT_EQ(symbol<DllFunction>(handle, dllUnregisterServerName)(), S_OK);
    factory.reset();
    dlclose(handle);
}

} // namespace zn
