// tests/hosts/VkrRefreshTest.cpp: empty for now.
