// tests/platform/windows/ComCacheUtilityTest.cpp: the utility's process and all that ends it.
