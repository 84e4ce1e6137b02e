// Nothing: what a shared library costs at least.
